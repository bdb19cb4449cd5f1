#pragma once

#include "diagnostics/diagnostic.h"

#include <QtCore/QByteArray>

namespace panelhost {

/// Returns, as warnings, what is in @p data though the schema @p schemaName ("factorymenu.xsd") doesn't allow it.
/// @p path is the file that @p data was read from; it stands in the diagnostics and isn't opened.
///
/// Nothing but @p data is read, whatever schemas it names. A document type declaration, which could name other files,
/// ends the validation with a diagnostic. So does data that isn't well-formed XML.
Diagnostics validate(const QByteArray &data, const QString &path, const QString &schemaName);

}
