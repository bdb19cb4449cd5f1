#pragma once

#include "yaml/yamlnode.h"

#include <QtCore/QByteArray>

#include <optional>

namespace panelhost {

class DiagnosticCollector;

/// The one document in @p data; a null value if there is none. Nothing, after the problem was told, for text that isn't
/// UTF-8 or YAML, for a second document, and beyond the limits.
std::optional<YamlNode> parseYaml(const QByteArray &data, DiagnosticCollector &diagnostics);

/// The value in one line of YAML.
QString yamlLine(const YamlNode &node);

}
