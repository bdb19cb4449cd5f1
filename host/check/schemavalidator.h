#pragma once

#include "diagnostics/diagnostic.h"

#include <QtCore/QByteArray>

namespace panelhost {

/// Returns a warning for everything in @p data that the schema @p schemaName, such as "factorymenu.xsd", doesn't allow.
/// @p path is the file that @p data was read from. It is used in the diagnostics and isn't opened.
///
/// Nothing but @p data is read, whatever schemas it names. A document type declaration, which could name other files,
/// ends the validation with a diagnostic. So does data that isn't well-formed XML.
Diagnostics validate(const QByteArray &data, const QString &path, const QString &schemaName);

}
