#pragma once

#include "check/finding.h"

#include <QtCore/QByteArray>

namespace panelhost {

/// Returns, as warnings, what is in @p data though the schema @p schemaName ("factorymenu.xsd") doesn't allow it.
/// @p path is the file that @p data was read from; it stands in the findings and isn't opened.
///
/// Nothing but @p data is read, whatever schemas it names. A document type declaration, which could name other files,
/// ends the validation with a finding. So does data that isn't well-formed XML.
Findings validate(const QByteArray &data, const QString &path, const QString &schemaName);

}
