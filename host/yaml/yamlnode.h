#pragma once

#include "diagnostics/diagnostic.h"

#include <QtCore/QString>
#include <QtCore/QVector>

#include <memory>
#include <utility>

namespace panelhost {

/// A value in a YAML file that knows where it stands, also when it was reached through an alias. Copies share the
/// value.
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

    /// No value at all.
    YamlNode() = default;
    /// @p aliases as for aliases().
    explicit YamlNode(std::shared_ptr<const Value> value, const QVector<SourceLocation> &aliases = {});

    bool isDefined() const { return m_value != nullptr; }
    Kind kind() const;
    bool isNull() const { return kind() == Kind::Null; }
    bool isScalar() const { return kind() == Kind::Scalar; }
    bool isSequence() const { return kind() == Kind::Sequence; }
    bool isMap() const { return kind() == Kind::Map; }
    /// The text of a scalar, empty for anything else.
    QString text() const;
    /// The elements of a sequence, none for anything else.
    QVector<YamlNode> items() const;
    /// The entries of a map in the order of the file, none for anything else.
    Entries entries() const;

    /// Where the value itself stands; where its key stands if it is null.
    SourceLocation definition() const;
    /// The aliases through which it was reached, the one that stands for all others first.
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
    QVector<YamlNode> children; ///< of a map: key and value by turns
    qint64 count = 1;           ///< values in it, with what aliases stand for
    int depth = 1;
};

}
