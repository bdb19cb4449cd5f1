#include "xmllimits.h"

#include "xmlcharstream.h"

#include <QtCore/QHash>
#include <QtCore/QStringList>

namespace LCD::FactoryModeImpl {

namespace {

// What the parser takes at most, measured. In bytes:
constexpr qint64 MemoryLimit = qint64(52) * 1024 * 1024;
constexpr qint64 CharCost = 5;
constexpr qint64 NodeCost = 240;
constexpr qint64 AttributeCost = 440;
constexpr qint64 AttributeTableCost = 280;
constexpr qint64 PrefixCost = 56;
constexpr qint64 DeclarationCost = 640;

// In steps of about 30 ns. It compares each attribute with the others of its element, each prefix in scope with the
// others at each element, and each entity with the others at each declaration.
constexpr qint64 WorkLimit = qint64(8) * 1000 * 1000;
constexpr qint64 EntityWork = 4;

using Entities = QHash<QString, QString>;

class XmlSurvey
{
public:
    explicit XmlSurvey(const QByteArray &data) : m_in(data) {}
    std::optional<XmlExcess> run();

private:
    bool atEnd() const { return m_excess || m_in.atEnd(); }
    QChar current() const { return m_in.current(); }
    bool at(char c) const { return m_in.current() == QLatin1Char(c); }
    bool atQuote() const { return at('"') || at('\''); }
    bool atSpace() const { return m_in.current().isSpace(); }

    void advance();
    bool take(char c);
    void skipSpace();
    void skipPast(const char *end);
    QString takeName();
    void addMemory(qint64 bytes);
    void addWork(qint64 steps);
    void checkDepth(int depth);
    void exceed(const QString &reason);

    void text();
    void markup();
    void startTag();
    void endStartTag(int attributes, int prefixes);
    void endTag();
    void attributeValue();
    void reference();

    void documentType();
    void internalSubset();
    void declaration();
    void entityDeclaration();
    void otherDeclaration();
    QString entityValue();
    QString characterOrReference();
    bool parameterReference();
    template <class Step>
    void literal(Step step);

    XmlCharStream m_in;
    std::optional<XmlExcess> m_excess;
    qint64 m_memory = 0;
    qint64 m_work = 0;
    bool m_inText = false;
    // One for each open element: the prefixes in its scope.
    std::vector<int> m_prefixes;
    Entities m_entities;
    Entities m_parameterEntities;
};

std::optional<XmlExcess> XmlSurvey::run()
{
    while (!atEnd()) {
        if (take('<'))
            markup();
        else if (at('&'))
            reference();
        else
            text();
    }
    return m_excess;
}

void XmlSurvey::advance()
{
    addMemory(CharCost);
    m_in.advance();
}

bool XmlSurvey::take(char c)
{
    if (atEnd() || !at(c))
        return false;
    advance();
    return true;
}

void XmlSurvey::skipSpace()
{
    while (!atEnd() && atSpace())
        advance();
}

void XmlSurvey::skipPast(const char *end)
{
    quint64 mask = 0;
    quint64 wanted = 0;
    for (; *end; ++end) {
        mask = mask << 16U | 0xffffU;
        wanted = wanted << 16U | static_cast<quint64>(*end);
    }
    quint64 last = 0;
    while (!atEnd() && (last & mask) != wanted) {
        last = last << 16U | current().unicode();
        advance();
    }
}

QString XmlSurvey::takeName()
{
    static const QString ends = QStringLiteral(";/<>&%\"'()[]=");
    QString name;
    while (!atEnd() && !atSpace() && !ends.contains(current())) {
        name += current();
        advance();
    }
    return name;
}

void XmlSurvey::addMemory(qint64 bytes)
{
    m_memory += bytes;
    if (m_memory > MemoryLimit)
        exceed(QStringLiteral("the document would take more than %1 MiB of memory").arg(MemoryLimit / 1024 / 1024));
}

void XmlSurvey::addWork(qint64 steps)
{
    m_work += steps;
    if (m_work > WorkLimit)
        exceed(QStringLiteral("the document would take too long to parse"));
}

void XmlSurvey::checkDepth(int depth)
{
    if (depth > XmlDepthLimit)
        exceed(QStringLiteral("the document is nested more than %1 levels deep").arg(XmlDepthLimit));
}

void XmlSurvey::exceed(const QString &reason)
{
    if (!m_excess)
        m_excess = XmlExcess{reason, m_in.line(), m_in.column()};
}

// White space alone makes no node.
void XmlSurvey::text()
{
    if (!m_inText && !atSpace()) {
        m_inText = true;
        addMemory(NodeCost);
    }
    advance();
}

void XmlSurvey::markup()
{
    m_inText = false;
    if (take('/')) {
        endTag();
        return;
    }
    addMemory(NodeCost);
    if (take('?'))
        skipPast("?>");
    else if (!take('!'))
        startTag();
    else if (take('['))
        skipPast("]]>");
    else if (take('-')) {
        take('-');
        skipPast("-->");
    } else {
        documentType();
    }
}

void XmlSurvey::startTag()
{
    int attributes = 0;
    int prefixes = 0;
    bool isEmpty = false;
    takeName();
    while (!atEnd() && !at('>')) {
        isEmpty = at('/');
        if (atQuote()) {
            ++attributes;
            attributeValue();
        } else if (at('x')) {
            prefixes += takeName().startsWith(QLatin1String("xmlns")) ? 1 : 0;
        } else {
            advance();
        }
    }
    take('>');
    endStartTag(attributes, prefixes);
    if (isEmpty)
        endTag();
}

void XmlSurvey::endStartTag(int attributes, int prefixes)
{
    const int inherited = m_prefixes.empty() ? 0 : m_prefixes.back();
    const qint64 inScope = inherited + prefixes;
    m_prefixes.push_back(static_cast<int>(inScope));
    checkDepth(static_cast<int>(m_prefixes.size()));
    addMemory(attributes * AttributeCost + (attributes > 0 ? AttributeTableCost : 0));
    addMemory(prefixes > 0 ? inScope * PrefixCost : 0);
    addWork(1 + qint64(attributes) * attributes + inScope * inScope / 2);
}

void XmlSurvey::endTag()
{
    if (!m_prefixes.empty())
        m_prefixes.pop_back();
}

void XmlSurvey::attributeValue()
{
    literal([this] {
        if (at('&'))
            reference();
        else
            advance();
    });
}

// A quote from within an entity doesn't end the literal that the entity was entered in.
template <class Step>
void XmlSurvey::literal(Step step)
{
    const QChar quote = current();
    int level = m_in.level();
    advance();
    while (!atEnd()) {
        level = std::min(level, m_in.level());
        if (current() == quote && m_in.level() <= level)
            break;
        step();
    }
    advance();
}

void XmlSurvey::reference()
{
    static const QStringList predefined{QStringLiteral("lt"), QStringLiteral("gt"), QStringLiteral("amp"),
                                        QStringLiteral("apos"), QStringLiteral("quot")};
    advance();
    const QString name = takeName();
    if (!at(';'))
        return;
    const auto entity = m_entities.constFind(name);
    if (name.startsWith(QLatin1Char('#')) || predefined.contains(name))
        m_inText = false;
    else if (entity == m_entities.constEnd())
        addMemory(2 * NodeCost);
    else if (m_in.enter(name, *entity))
        addWork(m_in.level());
    if (!m_inText)
        addMemory(NodeCost);
    m_inText = true;
    advance();
}

void XmlSurvey::documentType()
{
    while (!atEnd() && !at('>')) {
        if (atQuote())
            literal([this] { advance(); });
        else if (take('['))
            internalSubset();
        else
            advance();
    }
    take('>');
}

void XmlSurvey::internalSubset()
{
    while (!atEnd() && !at(']')) {
        if (take('<'))
            declaration();
        else if (at('%'))
            parameterReference();
        else
            advance();
    }
    take(']');
}

void XmlSurvey::declaration()
{
    addMemory(DeclarationCost);
    if (take('?')) {
        skipPast("?>");
        return;
    }
    take('!');
    if (take('-')) {
        take('-');
        skipPast("-->");
        return;
    }
    if (takeName() == QLatin1String("ENTITY"))
        entityDeclaration();
    otherDeclaration();
}

// Up to the end of its value. A reference without a name is the mark of a parameter entity.
void XmlSurvey::entityDeclaration()
{
    skipSpace();
    bool isParameter = false;
    while (at('%') && !atEnd()) {
        isParameter = !parameterReference() || isParameter;
        skipSpace();
    }
    const QString name = takeName();
    skipSpace();
    while (at('%') && !atEnd())
        parameterReference();
    skipSpace();
    if (!atQuote())
        return;
    const QString value = entityValue();
    Entities &entities = isParameter ? m_parameterEntities : m_entities;
    if (!entities.contains(name))
        entities.insert(name, value);
    addWork(EntityWork * (m_entities.size() + m_parameterEntities.size()));
}

void XmlSurvey::otherDeclaration()
{
    int brackets = 0;
    while (!atEnd() && !at('>')) {
        if (atQuote()) {
            attributeValue();
            continue;
        }
        if (at('%')) {
            parameterReference();
            continue;
        }
        if (at('('))
            checkDepth(++brackets);
        else if (at(')'))
            --brackets;
        advance();
    }
    take('>');
}

QString XmlSurvey::entityValue()
{
    QString value;
    literal([this, &value] {
        if (at('%')) {
            parameterReference();
        } else if (take('&')) {
            value += characterOrReference();
        } else {
            value += current();
            advance();
        }
    });
    return value;
}

// A character by number stands for itself; any other reference is followed where the entity is used.
QString XmlSurvey::characterOrReference()
{
    const QString name = takeName();
    if (!name.startsWith(QLatin1Char('#')) || !take(';'))
        return QLatin1Char('&') + name;
    const bool isHex = name.startsWith(QLatin1String("#x"));
    const uint code = isHex ? name.midRef(2).toUInt(nullptr, 16) : name.midRef(1).toUInt(nullptr, 10);
    return QString(QChar(code));
}

bool XmlSurvey::parameterReference()
{
    advance();
    const QString name = takeName();
    if (name.isEmpty() || !at(';'))
        return false;
    const auto entity = m_parameterEntities.constFind(name);
    if (entity != m_parameterEntities.constEnd() && m_in.enter(name, *entity))
        addWork(m_in.level());
    advance();
    return true;
}

}

std::optional<XmlExcess> findXmlExcess(const QByteArray &data)
{
    if (data.size() > XmlSizeLimit)
        return XmlExcess{QStringLiteral("the document is larger than %1 MiB").arg(XmlSizeLimit / 1024 / 1024), 1, 1};
    return XmlSurvey(data).run();
}

}
