#include "yaml/yamldocument.h"

#include "diagnostics/diagnosticcollector.h"
#include "yaml/limits.h"

#include <QtCore/QStringList>
#include <QtCore/QTextCodec>

#include <algorithm>
#include <map>
#include <sstream>
#include <yaml-cpp/depthguard.h>
#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/yaml.h>

namespace panelhost {

namespace {

/// Thrown if a document can't be read further.
struct Rejection
{
    SourceLocation where;
    QString text;
};

SourceLocation locationOf(const YAML::Mark &mark)
{
    return mark.is_null() ? SourceLocation() : SourceLocation{mark.line + 1, mark.column + 1};
}

/// Creates values from the events of the parser. An alias becomes a node that shares the value and has its own
/// location.
class Builder final : public YAML::EventHandler
{
public:
    YamlNode root() const { return m_root; }

    void OnDocumentStart(const YAML::Mark &) override {}
    void OnDocumentEnd() override {}
    void OnNull(const YAML::Mark &mark, YAML::anchor_t anchor) override
    {
        begin(YamlNode::Kind::Null, mark, anchor);
        if (isValueOfMap())
            m_open.back().value->location = m_open.at(m_open.size() - 2).value->children.constLast().definition();
        end();
    }
    void OnAlias(const YAML::Mark &mark, YAML::anchor_t anchor) override
    {
        const auto node = m_anchors.find(anchor);
        if (node == m_anchors.end())
            throw Rejection{locationOf(mark), QStringLiteral("the alias is inside the value that it refers to")};
        add(YamlNode(node->second.value(), {locationOf(mark)}), locationOf(mark));
    }
    void OnScalar(const YAML::Mark &mark, const std::string &, YAML::anchor_t anchor, const std::string &text) override
    {
        begin(YamlNode::Kind::Scalar, mark, anchor);
        m_open.back().value->text = QString::fromStdString(text);
        end();
    }
    void OnSequenceStart(const YAML::Mark &mark, const std::string &, YAML::anchor_t anchor,
                         YAML::EmitterStyle::value) override
    {
        begin(YamlNode::Kind::Sequence, mark, anchor);
    }
    void OnSequenceEnd() override { end(); }
    void OnMapStart(const YAML::Mark &mark, const std::string &, YAML::anchor_t anchor,
                    YAML::EmitterStyle::value) override
    {
        begin(YamlNode::Kind::Map, mark, anchor);
    }
    void OnMapEnd() override { end(); }

private:
    struct Open
    {
        std::shared_ptr<YamlNode::Value> value;
        YAML::anchor_t anchor;
    };

    bool isValueOfMap() const
    {
        if (m_open.size() < 2)
            return false;
        const auto &outer = *m_open.at(m_open.size() - 2).value;
        return outer.kind == YamlNode::Kind::Map && outer.children.size() % 2 == 1;
    }

    void begin(YamlNode::Kind kind, const YAML::Mark &mark, YAML::anchor_t anchor)
    {
        auto value = std::make_shared<YamlNode::Value>();
        value->kind = kind;
        value->location = locationOf(mark);
        m_open.push_back({std::move(value), anchor});
    }

    void end()
    {
        const Open done = m_open.back();
        m_open.pop_back();
        const YamlNode node(done.value);
        if (done.anchor != YAML::NullAnchor)
            m_anchors[done.anchor] = node;
        add(node, done.value->location);
    }

    void add(const YamlNode &node, SourceLocation where)
    {
        if (m_open.empty()) {
            m_root = node;
            return;
        }
        auto &outer = *m_open.back().value;
        outer.children.append(node);
        outer.count += node.value()->count;
        outer.depth = qMax(outer.depth, node.value()->depth + 1);
        if (outer.depth > limits::ValueDepth)
            throw Rejection{where, QStringLiteral("not read: nested too deep")};
        if (outer.count > limits::Values)
            throw Rejection{
                where,
                QStringLiteral("more than %1 values, including those that aliases refer to").arg(limits::Values)};
    }

    YamlNode m_root;
    std::vector<Open> m_open;
    std::map<YAML::anchor_t, YamlNode> m_anchors;
};

YamlNode parsed(const QByteArray &data)
{
    std::istringstream stream(data.toStdString());
    YAML::Parser parser(stream);
    Builder first;
    Builder second;
    const bool hasFirst = parser.HandleNextDocument(first);
    if (hasFirst && parser.HandleNextDocument(second))
        throw Rejection{second.root().definition(), QStringLiteral("a second document; a file holds one")};
    return hasFirst ? first.root() : YamlNode(std::make_shared<YamlNode::Value>());
}

/// Reads UTF-8 in pieces.
class Utf8Reader
{
public:
    /// Number of characters in @p bytes.
    int read(const char *bytes, int size) { return m_codec->toUnicode(bytes, size, &m_state).size(); }
    bool isWithinCharacter() const { return m_state.remainingChars > 0; }
    bool hasFailed() const { return m_state.invalidChars > 0; }

private:
    const QTextCodec *m_codec = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState m_state{QTextCodec::IgnoreHeader};
};

bool isUtf8(const QByteArray &line)
{
    Utf8Reader reader;
    reader.read(line.constData(), line.size());
    return !reader.hasFailed() && !reader.isWithinCharacter();
}

// Returns the number of characters before the first one that isn't UTF-8.
int charactersBeforeFailure(const QByteArray &line)
{
    Utf8Reader reader;
    int characters = 0;
    int whole = 0;
    for (const char &byte : line) {
        if (!reader.isWithinCharacter())
            whole = characters;
        characters += reader.read(&byte, 1);
        if (reader.hasFailed())
            break;
    }
    return whole;
}

void requireUtf8(const QByteArray &data)
{
    const auto lines = data.split('\n');
    for (int line = 0; line < lines.size(); ++line) {
        if (!isUtf8(lines.at(line)))
            throw Rejection{{line + 1, charactersBeforeFailure(lines.at(line)) + 1}, QStringLiteral("not UTF-8")};
    }
}

/// Returns whether @p text stands without quotes everywhere. May return false for a text that needs no quotes either.
bool isPlain(const QString &text)
{
    const auto isLetterOrDigit = [](QChar c) { return c.unicode() < 0x80 && c.isLetterOrNumber(); };
    const auto isAllowed = [isLetterOrDigit](QChar c) {
        return isLetterOrDigit(c) || QLatin1String(" -._/").contains(c);
    };
    return !text.isEmpty() && isLetterOrDigit(text.front()) && text.back() != QLatin1Char(' ')
        && std::all_of(text.begin(), text.end(), isAllowed)
        && text.compare(QLatin1String("null"), Qt::CaseInsensitive) != 0;
}

/// Returns @p text as it stands in a flow collection. Plain texts, which are by far the most, don't need the emitter:
/// it matches every character with a dozen expressions.
QString flowScalar(const QString &text)
{
    if (isPlain(text))
        return text;
    YAML::Emitter emitter;
    emitter << YAML::Flow << YAML::BeginSeq << text.toStdString() << YAML::EndSeq;
    const QString list = QString::fromUtf8(emitter.c_str());
    return list.mid(1, list.size() - 2);
}

QString flowText(const YamlNode &node)
{
    QStringList parts;
    switch (node.kind()) {
    case YamlNode::Kind::Null:
        break;
    case YamlNode::Kind::Scalar:
        return flowScalar(node.text());
    case YamlNode::Kind::Sequence:
        for (const auto &item : node.items())
            parts << flowText(item);
        return QStringLiteral("[%1]").arg(parts.join(QStringLiteral(", ")));
    case YamlNode::Kind::Map:
        for (const auto &[key, value] : node.entries())
            parts << flowText(key) + QStringLiteral(": ") + flowText(value);
        return QStringLiteral("{%1}").arg(parts.join(QStringLiteral(", ")));
    }
    return QStringLiteral("~");
}

}

std::optional<YamlNode> parseYaml(const QByteArray &data, DiagnosticCollector &diagnostics)
{
    try {
        requireUtf8(data);
        return parsed(data);
    } catch (const Rejection &rejection) {
        diagnostics.add(rejection.where, rejection.text);
    } catch (const YAML::DeepRecursion &e) {
        diagnostics.add(locationOf(e.mark), QStringLiteral("not read: nested too deep"));
    } catch (const YAML::Exception &e) {
        diagnostics.add(locationOf(e.mark), QStringLiteral("not YAML: ") + QString::fromStdString(e.msg));
    }
    return std::nullopt;
}

QString yamlLine(const YamlNode &node)
{
    return flowText(node).simplified();
}

}
