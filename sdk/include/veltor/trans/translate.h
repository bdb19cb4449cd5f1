#pragma once

#include <QtCore/QString>

namespace veltor::trans {

class Translator;

/// Returns the text of @p key in @p context and @p section of the current catalog of @p translator. Returns @p key if
/// the catalog doesn't contain it or if @p translator is null. Thread-safe.
QString translate(Translator *translator, const QString &context, const QString &section, const QString &key);

}
