#pragma once

#include <QtCore/QStringList>

namespace panelhost {

/// The language of the window's texts. The texts of the component have a language of their own. Without a call of
/// setWindowLanguage(), all texts are English. GUI thread.

/// Returns the codes of the languages that the window has, such as "zh_CN".
QStringList windowLanguages();
/// Returns the language of the window that @p locale names, such as "de_AT.UTF-8"; English if there is none.
QString windowLanguageOf(const QString &locale);
/// Returns the language of this computer, as the environment or the desktop sets it.
QString systemWindowLanguage();
/// Changes the language of all open windows to @p code, or to that of this computer if @p code is empty. Has no effect
/// for another code that isn't one of windowLanguages().
void setWindowLanguage(const QString &code);
/// Returns what was set last; empty: the language of this computer.
QString windowLanguage();

}
