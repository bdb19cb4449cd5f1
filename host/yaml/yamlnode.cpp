#include "yaml/yamlnode.h"

namespace panelhost {

YamlNode::YamlNode(std::shared_ptr<const Value> value, const QVector<SourceLocation> &aliases)
    : m_value(std::move(value)), m_aliases(aliases)
{
}

YamlNode::Kind YamlNode::kind() const
{
    return m_value ? m_value->kind : Kind::Null;
}

QString YamlNode::text() const
{
    return m_value ? m_value->text : QString();
}

QVector<YamlNode> YamlNode::items() const
{
    QVector<YamlNode> items;
    if (!isSequence())
        return items;
    for (const auto &child : m_value->children)
        items.append(YamlNode(child.m_value, m_aliases + child.m_aliases));
    return items;
}

YamlNode::Entries YamlNode::entries() const
{
    Entries entries;
    if (!isMap())
        return entries;
    const auto &children = m_value->children;
    for (int key = 0; key + 1 < children.size(); key += 2) {
        const auto &value = children.at(key + 1);
        entries.append({YamlNode(children.at(key).m_value, m_aliases + children.at(key).m_aliases),
                        YamlNode(value.m_value, m_aliases + value.m_aliases)});
    }
    return entries;
}

SourceLocation YamlNode::definition() const
{
    return m_value ? m_value->location : SourceLocation();
}

}
