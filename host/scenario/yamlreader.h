#pragma once

#include "scenario/problems.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <map>
#include <optional>
#include <utility>
#include <yaml-cpp/yaml.h>

namespace panelhost {

/// Reads values of known types out of a YAML document and collects what is wrong with it. Each reader returns nothing
/// after it has told the problem.
class YamlReader
{
public:
    explicit YamlReader(Problems &problems) : m_problems(problems) {}

    /// The file that is being read.
    QString file() const { return m_problems.file(); }

    using Entry = std::pair<YAML::Node, YAML::Node>;
    using Entries = std::vector<Entry>;

    /// The text of a scalar, empty for anything else.
    static QString scalar(const YAML::Node &node);
    /// Where @p node stands; where its key stands if nothing stands there.
    Place placeOf(const YAML::Node &node) const;
    /// What stands there, short and in words: "a list", "the text \"12x\"".
    static QString found(const YAML::Node &node);
    /// The node in one line.
    static QString oneLine(const YAML::Node &node);

    /// The entries of a map. Tells of a node that is none, of keys that are not @p allowed and of keys that stand
    /// twice; those are left out.
    Entries map(const YAML::Node &node, const QStringList &allowed);
    /// The entries of a map whose keys are free.
    Entries freeMap(const YAML::Node &node);
    std::optional<QString> text(const YAML::Node &node, const QString &expected);
    /// A text, or a list of texts.
    std::optional<QStringList> texts(const YAML::Node &node, const QString &expected);
    std::optional<int> integer(const YAML::Node &node, int min, int max);
    std::optional<double> number(const YAML::Node &node, double min, double max);
    std::optional<bool> flag(const YAML::Node &node);
    /// Milliseconds, from "500ms", "20s", "1.5s" or "2min".
    std::optional<qint64> duration(const YAML::Node &node);
    /// One of @p allowed.
    std::optional<QString> word(const YAML::Node &node, const QStringList &allowed);

    void problem(const YAML::Node &where, const QString &expected);
    void complain(const YAML::Node &where, const QString &text);

private:
    bool isNew(const YAML::Node &key, QStringList &seen);

    Problems &m_problems;
    std::map<int, Place> m_keysOfNothing; ///< by the position of the missing value
};

/// The duration as a scenario writes it.
QString durationText(qint64 milliseconds);

}
