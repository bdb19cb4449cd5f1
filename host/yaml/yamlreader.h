#pragma once

#include "diagnostics/diagnosticcollector.h"
#include "yaml/yamlnode.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace panelhost {

/// Reads values of known types from a YAML document and collects its errors. Each function adds an error and returns
/// nothing if the value isn't as expected.
class YamlReader
{
public:
    explicit YamlReader(DiagnosticCollector &diagnostics) : m_diagnostics(diagnostics) {}

    /// Returns the path of the file that is being read.
    QString file() const { return m_diagnostics.file(); }

    using Entry = YamlNode::Entry;
    using Entries = YamlNode::Entries;

    /// Returns the text of a scalar; empty for other kinds.
    static QString scalar(const YamlNode &node);
    /// Returns a short description of @p node, such as "a list" or "the text \"12x\"".
    static QString found(const YamlNode &node);

    /// Returns the entries of a map. Adds an error if @p node isn't a map and for keys that are not @p allowed or are
    /// repeated; these are left out.
    Entries map(const YamlNode &node, const QStringList &allowed);
    /// Returns the entries of a map with any keys.
    Entries freeMap(const YamlNode &node);
    std::optional<QString> text(const YamlNode &node, const QString &expected);
    /// Returns a text or a list of texts.
    std::optional<QStringList> texts(const YamlNode &node, const QString &expected);
    std::optional<int> integer(const YamlNode &node, int min, int max);
    std::optional<double> number(const YamlNode &node, double min, double max);
    std::optional<bool> flag(const YamlNode &node);
    /// Returns milliseconds, from a text that durationFromText() reads.
    std::optional<qint64> duration(const YamlNode &node);
    /// Returns a text that is one of @p allowed.
    std::optional<QString> word(const YamlNode &node, const QStringList &allowed);

    /// Adds the error "found ..., expected @p expected". If what was found resembles one of @p words, the message asks
    /// whether that word was meant.
    void errorExpected(const YamlNode &where, const QString &expected, const QStringList &words = {});
    void error(const YamlNode &where, const QString &text);

private:
    bool isNew(const YamlNode &key, QStringList &seen);

    DiagnosticCollector &m_diagnostics;
};

}
