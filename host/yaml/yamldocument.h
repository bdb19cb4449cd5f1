#pragma once

#include "yaml/yamlnode.h"

#include <QtCore/QByteArray>

#include <optional>

namespace panelhost {

class DiagnosticCollector;

/// Parses the document in @p data. Returns a null value if it is empty. Adds an error and returns nothing if the text
/// isn't UTF-8 or YAML, if there is a second document, or if a limit is exceeded.
std::optional<YamlNode> parseYaml(const QByteArray &data, DiagnosticCollector &diagnostics);

/// Returns the value as one line of YAML.
QString yamlLine(const YamlNode &node);

}
