#pragma once

#include "diagnostics/diagnostic.h"

#include <QtCore/QString>
#include <QtCore/QVector>

#include <memory>
#include <utility>

namespace panelhost {

/// A value in a YAML file with its location, also if it was reached through an alias. Implicitly shared.
class YamlNode
{
public:
    enum class Kind {
        Null,
        Scalar,
        Sequence,
        Map
    };

    struct Value;
    using Entry = std::pair<YamlNode, YamlNode>;
    using Entries = QVector<Entry>;

    /// Creates an undefined node.
    YamlNode() = default;
    /// @p aliases are those that aliases() returns.
    explicit YamlNode(std::shared_ptr<const Value> value, const QVector<SourceLocation> &aliases = {});

    bool isDefined() const { return m_value != nullptr; }
    Kind kind() const;
    bool isNull() const { return kind() == Kind::Null; }
    bool isScalar() const { return kind() == Kind::Scalar; }
    bool isSequence() const { return kind() == Kind::Sequence; }
    bool isMap() const { return kind() == Kind::Map; }
    /// Returns the text of a scalar; empty for other kinds.
    QString text() const;
    /// Returns the elements of a sequence; none for other kinds.
    QVector<YamlNode> items() const;
    /// Returns the entries of a map in the order of the file; none for other kinds.
    Entries entries() const;

    /// Returns the location of the value. If the value is null, returns the location of its key.
    SourceLocation definition() const;
    /// Returns the aliases through which it was reached, the outermost one first.
    const QVector<SourceLocation> &aliases() const { return m_aliases; }
    const std::shared_ptr<const Value> &value() const { return m_value; }

private:
    std::shared_ptr<const Value> m_value;
    QVector<SourceLocation> m_aliases;
};

struct YamlNode::Value
{
    Kind kind = Kind::Null;
    SourceLocation location;
    QString text;
    QVector<YamlNode> children; ///< of a map: keys and values alternating
    qint64 count = 1;           ///< number of values in it, including those of aliases
    int depth = 1;
};

}
