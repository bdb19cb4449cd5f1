#pragma once

#include <QtCore/QString>

#include <functional>

class QWidget;

namespace panelhost {

/// Calls @p setTexts now, and again whenever the language of the window has changed, as long as @p widget exists. For
/// the texts of the widget and of the actions in it. GUI thread.
void keepTranslated(QWidget *widget, const std::function<void()> &setTexts);

/// Returns the text of an action without the letter for the keyboard and without dots.
QString plainActionText(const QString &text);

/// Returns the description or the place of a fault in the language of the window. @p text is as in FaultInfo.
QString translatedFault(const QString &text);

}
