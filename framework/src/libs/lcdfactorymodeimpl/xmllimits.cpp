#include "xmllimits.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <map>
#include <vector>

namespace LCD::FactoryModeImpl {

namespace {

// An attribute or a declaration counts as three nodes.
constexpr int NodesOfAttribute = 3;

// Stops at the first violation, as if the input ended there.
class XmlLimitCheck
{
public:
    explicit XmlLimitCheck(const QString &text) : m_begin(text.cbegin()), m_at(m_begin), m_end(text.cend())
    {
        add(m_characters, text.size());
    }
    std::optional<XmlLimitViolation> run();

private:
    struct Count
    {
        const char *what;
        qint64 limit;
        qint64 value = 0;
    };
    struct Entity
    {
        QString text;
        bool isOpen = false;
    };
    using Entities = std::map<QString, Entity>;
    struct Return // where to continue after an open entity
    {
        Entity *entity;
        const QChar *at;
        const QChar *end;
    };
    struct Scope // the namespace prefixes that are in scope in an element
    {
        qint64 prefixes = 0;
        qint64 characters = 0;
    };

    void add(Count &count, qint64 number);

    // The input: the document with the text of an entity in the place of each reference.
    bool atEnd() { return m_at == m_end && !leaveEntities(); }
    bool leaveEntities();
    bool at(char c) { return !atEnd() && *m_at == QLatin1Char(c); }
    bool atQuote() { return at('"') || at('\''); }
    bool take(char c)
    {
        const bool isHere = at(c);
        m_at += isHere ? 1 : 0;
        return isHere;
    }
    QString takeName();
    void skipPast(char mark, int marks);
    bool reference();
    void characterOrReference()
    {
        if (at('&'))
            reference();
        else
            ++m_at;
    }
    template <class Step>
    void literal(Step step);

    // The parts of a document. Each function is called after the first characters of its part have been read.
    void text();
    void markup();
    void startTag();
    void endElement();
    void attributeValue()
    {
        literal([this] { characterOrReference(); });
    }
    void documentType();
    void declaration();
    void declareEntity(Entities &entities, const QString &name);
    QString entityCharacter();

    const QChar *m_begin;
    const QChar *m_at;
    const QChar *m_end;
    std::vector<Return> m_returns;
    Entities m_entities;
    Entities m_parameterEntities;
    std::vector<Scope> m_scopes; // one for each open element

    Count m_levels{"levels", XmlLevelLimit};
    Count m_characters{"characters", XmlCharacterLimit};
    Count m_nodes{"nodes", XmlNodeLimit};
    Count m_comparisons{"comparisons of names", XmlComparisonLimit};
    std::optional<XmlLimitViolation> m_violation;
};

std::optional<XmlLimitViolation> XmlLimitCheck::run()
{
    while (!atEnd()) {
        if (take('<'))
            markup();
        else
            text();
    }
    return m_violation;
}

void XmlLimitCheck::add(Count &count, qint64 number)
{
    count.value += number;
    if (count.value <= count.limit || m_violation)
        return;
    const QChar *place = m_returns.empty() ? m_at : m_returns.front().at;
    const QString before(m_begin, static_cast<int>(place - m_begin));
    m_violation = {QStringLiteral("the document needs more than %1 %2").arg(count.limit).arg(QLatin1String(count.what)),
                   before.count(QLatin1Char('\n')) + 1, before.size() - before.lastIndexOf(QLatin1Char('\n'))};
    m_returns.clear();
    m_at = m_end;
}

// Leaves the entities that end here. Returns false at the end of the document.
bool XmlLimitCheck::leaveEntities()
{
    while (m_at == m_end && !m_returns.empty()) {
        m_at = m_returns.back().at;
        m_end = m_returns.back().end;
        m_returns.back().entity->isOpen = false;
        m_returns.pop_back();
    }
    return m_at != m_end;
}

QString XmlLimitCheck::takeName()
{
    static const QString ends = QStringLiteral(";/<>&%\"'()[]=");
    QString name;
    for (; !atEnd() && !m_at->isSpace() && !ends.contains(*m_at); ++m_at)
        name += *m_at;
    return name;
}

// Skips everything up to the first '>' that follows at least @p marks times @p mark, and that '>' as well.
void XmlLimitCheck::skipPast(char mark, int marks)
{
    int found = 0;
    while (!atEnd() && !(found >= marks && at('>'))) {
        found = at(mark) ? found + 1 : 0;
        ++m_at;
    }
    take('>');
}

// Continues in the text of the entity. Doesn't enter an open entity, because the parser refuses an entity that contains
// itself. A reference to an undeclared entity makes a node and splits the text around it. Returns false if there is no
// reference here, only a single '&' or '%'.
bool XmlLimitCheck::reference()
{
    static const QStringList predefined{QStringLiteral("lt"), QStringLiteral("gt"), QStringLiteral("amp"),
                                        QStringLiteral("apos"), QStringLiteral("quot")};
    const bool isParameter = take('%');
    m_at += isParameter ? 0 : 1;
    const QString name = takeName();
    if (name.isEmpty() || !take(';'))
        return false;
    if (!isParameter && (name.startsWith(QLatin1Char('#')) || predefined.contains(name)))
        return true;
    Entities &entities = isParameter ? m_parameterEntities : m_entities;
    const auto found = entities.find(name);
    const bool isKnown = found != entities.end();
    add(m_nodes, isKnown ? 1 : 2);
    if (isKnown && !found->second.isOpen && !m_violation) {
        Entity &entity = found->second;
        m_returns.push_back({&entity, m_at, m_end});
        entity.isOpen = true;
        m_at = entity.text.cbegin();
        m_end = entity.text.cend();
        add(m_characters, entity.text.size());
    }
    return true;
}

// A quote in an entity doesn't end a literal that began outside the entity.
template <class Step>
void XmlLimitCheck::literal(Step step)
{
    const QChar quote = *m_at++;
    std::size_t entities = m_returns.size();
    while (!atEnd()) {
        entities = std::min(entities, m_returns.size());
        if (*m_at == quote && m_returns.size() == entities)
            break;
        step();
    }
    m_at += atEnd() ? 0 : 1;
}

// White space alone makes no node.
void XmlLimitCheck::text()
{
    while (!atEnd() && m_at->isSpace())
        ++m_at;
    if (atEnd() || at('<'))
        return;
    add(m_nodes, 1);
    while (!atEnd() && !at('<'))
        characterOrReference();
}

void XmlLimitCheck::markup()
{
    if (take('/')) {
        skipPast('/', 0);
        endElement();
        return;
    }
    add(m_nodes, 1);
    if (take('?'))
        skipPast('?', 1);
    else if (!take('!'))
        startTag();
    else if (take('['))
        skipPast(']', 2);
    else if (take('-') && take('-'))
        skipPast('-', 2);
    else
        documentType();
}

void XmlLimitCheck::startTag()
{
    Scope scope = m_scopes.empty() ? Scope() : m_scopes.back();
    qint64 attributes = 0;
    qint64 characters = 0;
    bool isEmpty = false;
    while (!atEnd() && !take('>')) {
        isEmpty = at('/');
        if (atQuote()) {
            ++attributes;
            attributeValue();
        } else if (at('x')) {
            const QString name = takeName();
            characters += name.size();
            scope.prefixes += name.startsWith(QLatin1String("xmlns")) ? 1 : 0;
            scope.characters += name.startsWith(QLatin1String("xmlns")) ? name.size() : 0;
        } else {
            ++characters;
            ++m_at;
        }
    }
    m_scopes.push_back(scope);
    add(m_levels, 1);
    add(m_nodes, NodesOfAttribute * attributes);
    add(m_comparisons, attributes * characters + scope.prefixes * scope.characters);
    if (isEmpty)
        endElement();
}

void XmlLimitCheck::endElement()
{
    if (m_scopes.empty())
        return;
    m_scopes.pop_back();
    --m_levels.value;
}

void XmlLimitCheck::documentType()
{
    while (!atEnd() && !take('>')) {
        if (take('<'))
            declaration();
        else if (atQuote())
            attributeValue();
        else if (at('%'))
            reference();
        else
            ++m_at;
    }
}

void XmlLimitCheck::declaration()
{
    add(m_nodes, NodesOfAttribute);
    if (take('?'))
        return skipPast('?', 1);
    if (take('!') && take('-') && take('-'))
        return skipPast('-', 2);
    const bool isEntity = takeName() == QLatin1String("ENTITY");
    bool isParameter = false;
    int names = 0;
    QString name;
    int brackets = 0;
    while (!atEnd() && !take('>')) {
        if (atQuote() && isEntity && names == 1) {
            declareEntity(isParameter ? m_parameterEntities : m_entities, name);
        } else if (atQuote()) {
            attributeValue();
        } else if (at('%')) {
            isParameter = !reference() || isParameter;
        } else if (take('(')) {
            ++brackets;
            add(m_levels, 1);
        } else if (take(')')) {
            m_levels.value -= brackets > 0 ? 1 : 0;
            brackets -= brackets > 0 ? 1 : 0;
        } else if (m_at->isSpace() || (name = takeName()).isEmpty()) {
            ++m_at;
        } else {
            ++names;
        }
    }
    m_levels.value -= brackets;
}

// If a name is declared twice, the first declaration counts.
void XmlLimitCheck::declareEntity(Entities &entities, const QString &name)
{
    QString text;
    literal([this, &text] {
        if (at('%'))
            reference();
        else if (take('&'))
            text += entityCharacter();
        else
            text += *m_at++;
    });
    entities.emplace(name, Entity{text});
    const auto declared = static_cast<qint64>(m_entities.size()) + static_cast<qint64>(m_parameterEntities.size());
    add(m_comparisons, 2 * declared * (name.size() + text.size()));
}

// A character reference is replaced by its character. Any other reference is followed where the entity is used.
QString XmlLimitCheck::entityCharacter()
{
    const QString name = takeName();
    if (!name.startsWith(QLatin1Char('#')) || !take(';'))
        return QLatin1Char('&') + name;
    const bool isHex = name.startsWith(QLatin1String("#x"));
    return QString(QChar(isHex ? name.midRef(2).toUInt(nullptr, 16) : name.midRef(1).toUInt(nullptr, 10)));
}

}

std::optional<XmlLimitViolation> checkXmlLimits(const QString &text)
{
    return XmlLimitCheck(text).run();
}

}
