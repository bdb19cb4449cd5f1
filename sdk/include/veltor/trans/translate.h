#pragma once

#include <QtCore/QString>

namespace veltor::trans {

class Translator;

/// The text of @p key in @p context and @p section of the translator's present catalogue; @p key itself when the
/// catalogue lacks it or @p translator is null. May be called on any thread.
QString translate(Translator *translator, const QString &context, const QString &section, const QString &key);

}
