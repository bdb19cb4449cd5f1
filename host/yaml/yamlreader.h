#pragma once

#include "diagnostics/diagnosticcollector.h"
#include "yaml/yamlnode.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace panelhost {

/// Reads values of known types out of a YAML document and collects what is wrong with it. Each reader returns nothing
/// after it has told the problem.
class YamlReader
{
public:
    explicit YamlReader(DiagnosticCollector &diagnostics) : m_diagnostics(diagnostics) {}

    /// The file that is being read.
    QString file() const { return m_diagnostics.file(); }

    using Entry = YamlNode::Entry;
    using Entries = YamlNode::Entries;

    /// The text of a scalar, empty for anything else.
    static QString scalar(const YamlNode &node);
    /// What stands there, short and in words: "a list", "the text \"12x\"".
    static QString found(const YamlNode &node);

    /// The entries of a map. Tells of a node that is none, of keys that are not @p allowed and of keys that stand
    /// twice; those are left out.
    Entries map(const YamlNode &node, const QStringList &allowed);
    /// The entries of a map whose keys are free.
    Entries freeMap(const YamlNode &node);
    std::optional<QString> text(const YamlNode &node, const QString &expected);
    /// A text, or a list of texts.
    std::optional<QStringList> texts(const YamlNode &node, const QString &expected);
    std::optional<int> integer(const YamlNode &node, int min, int max);
    std::optional<double> number(const YamlNode &node, double min, double max);
    std::optional<bool> flag(const YamlNode &node);
    /// Milliseconds, from "500ms", "20s", "1.5s" or "2min".
    std::optional<qint64> duration(const YamlNode &node);
    /// One of @p allowed.
    std::optional<QString> word(const YamlNode &node, const QStringList &allowed);

    void errorExpected(const YamlNode &where, const QString &expected);
    void error(const YamlNode &where, const QString &text);

private:
    bool isNew(const YamlNode &key, QStringList &seen);

    DiagnosticCollector &m_diagnostics;
};

/// The duration as a scenario writes it.
QString durationText(qint64 milliseconds);

}
