#include "check/schemavalidator.h"

#include "check/schemamessage.h"

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QStack>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlschemas.h>

#include <algorithm>
#include <memory>

// Outside of any namespace, because the macro declares a function.
static void initSchemaResource()
{
    Q_INIT_RESOURCE(schemas);
}

namespace panelhost {

namespace {

/// The largest number of validations. An unexpected element ends the validation of its parent, so the file is
/// validated again without this element.
constexpr int MaxPasses = 50;

/// The five pointers that the parser gives for each attribute.
enum AttributeField {
    LocalName,
    Prefix,
    Namespace,
    ValueBegin,
    ValueEnd,
    FieldCount
};

using ParserPointer = std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)>;
using SchemaPointer = std::unique_ptr<xmlSchema, decltype(&xmlSchemaFree)>;
using ValidatorPointer = std::unique_ptr<xmlSchemaValidCtxt, decltype(&xmlSchemaFreeValidCtxt)>;
using PlugPointer = std::unique_ptr<xmlSchemaSAXPlugStruct, decltype(&xmlSchemaSAXUnplug)>;

QString textOf(const xmlChar *text)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(text));
}

QString textOf(const xmlChar *begin, const xmlChar *end)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(begin), static_cast<int>(end - begin));
}

SchemaPointer loadSchema(const QString &name)
{
    initSchemaResource();
    QFile file(QStringLiteral(":/schemas/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return {nullptr, xmlSchemaFree};
    const QByteArray source = file.readAll();
    const std::unique_ptr<xmlSchemaParserCtxt, decltype(&xmlSchemaFreeParserCtxt)> parser(
        xmlSchemaNewMemParserCtxt(source.constData(), source.size()), xmlSchemaFreeParserCtxt);
    return {parser ? xmlSchemaParse(parser.get()) : nullptr, xmlSchemaFree};
}

const xmlChar *asXml(const QByteArray &text)
{
    return reinterpret_cast<const xmlChar *>(text.constData());
}

int characterCount(const xmlChar *begin, const xmlChar *end)
{
    return textOf(begin, end).size();
}

/// A pass over the file: forwards the events of the parser to the validator and keeps the location of each open
/// element.
class ValidationPass
{
public:
    /// @p skipped are the numbers of the elements to leave out, counted in the order of their start tags.
    ValidationPass(const QByteArray &data, const QString &path, const QSet<int> &skipped)
        : m_data(data), m_path(path), m_skipped(skipped)
    {
    }

    void run(xmlSchema *schema);

    /// Returns all diagnostics except those about unexpected elements.
    const Diagnostics &diagnostics() const { return m_diagnostics; }
    const Diagnostics &unexpectedDiagnostics() const { return m_unexpectedDiagnostics; }
    /// Returns the numbers of the unexpected elements.
    const QSet<int> &unexpected() const { return m_unexpected; }

private:
    struct Element
    {
        int number = 0;
        SourceLocation location;
        SchemaElement details;
    };

    xmlSAXHandler handlers();
    void startElement(const xmlChar *name, const xmlChar *prefix, const xmlChar *uri, int namespaceCount,
                      const xmlChar **namespaces, int attributeCount, int defaultedCount, const xmlChar **attributes);
    void endElement(const xmlChar *name, const xmlChar *prefix, const xmlChar *uri);
    void text(const xmlChar *begin, int size);
    void validateText();
    void closeElements();
    void rejectDoctype();
    void parserError(const xmlError &error);
    void validityError(const xmlError &error);

    Element elementAt(const xmlChar *name, const xmlChar *uri, int attributeCount, const xmlChar **attributes) const;
    /// Returns the location of @p position in the buffer of the parser, which has counted lines and columns up to
    /// @p counted.
    SourceLocation locationAt(const xmlChar *position, const xmlChar *counted) const;
    void rememberValues(const Element &element);
    Diagnostic diagnostic(SourceLocation location, const QString &text) const;

    static ValidationPass &of(void *self) { return *static_cast<ValidationPass *>(self); }

    const QByteArray &m_data;
    const QString m_path;
    const QSet<int> &m_skipped;
    Diagnostics m_diagnostics;
    Diagnostics m_unexpectedDiagnostics;
    QSet<int> m_unexpected;
    QStack<Element> m_open;
    QHash<QStringList, int> m_lineOfValue;
    QByteArray m_text;
    SourceLocation m_textLocation;
    int m_elementCount = 0;
    int m_skippedDepth = 0;
    bool m_isRejected = false;
    bool m_isOver = false;
    xmlParserCtxt *m_parser = nullptr;
    xmlSAXHandler *m_validation = nullptr;
    void *m_validator = nullptr;
};

void ValidationPass::run(xmlSchema *schema)
{
    const ParserPointer parser(xmlCreateMemoryParserCtxt(m_data.constData(), m_data.size()), xmlFreeParserCtxt);
    const ValidatorPointer validator(xmlSchemaNewValidCtxt(schema), xmlSchemaFreeValidCtxt);
    if (!parser || !validator)
        return;
    m_parser = parser.get();
    xmlCtxtUseOptions(m_parser, XML_PARSE_NONET);
    *m_parser->sax = handlers();
    m_parser->userData = this;
    xmlSchemaSetValidStructuredErrors(
        validator.get(), [](void *self, xmlErrorPtr error) { of(self).validityError(*error); }, this);
    // With no handler to wrap, the plug gives the validator's own.
    const PlugPointer plug(xmlSchemaSAXPlug(validator.get(), &m_validation, &m_validator), xmlSchemaSAXUnplug);
    if (!plug)
        return;
    xmlParseDocument(m_parser);
    closeElements();
}

// After an error the parser stops within elements. The validator frees what it keeps for an element when the element
// ends.
void ValidationPass::closeElements()
{
    m_isOver = true;
    while (!m_open.isEmpty()) {
        const SchemaElement element = m_open.pop().details;
        const QByteArray name = element.name.toUtf8();
        const QByteArray uri = element.xmlNamespace.toUtf8();
        m_validation->endElementNs(m_validator, asXml(name), nullptr, uri.isEmpty() ? nullptr : asXml(uri));
    }
}

xmlSAXHandler ValidationPass::handlers()
{
    xmlSAXHandler sax = {};
    sax.initialized = XML_SAX2_MAGIC;
    sax.startElementNs = [](void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri,
                            int namespaceCount, const xmlChar **namespaces, int attributeCount, int defaultedCount,
                            const xmlChar **attributes) {
        of(self).startElement(name, prefix, uri, namespaceCount, namespaces, attributeCount, defaultedCount,
                              attributes);
    };
    sax.endElementNs = [](void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri) {
        of(self).endElement(name, prefix, uri);
    };
    sax.characters = [](void *self, const xmlChar *begin, int size) { of(self).text(begin, size); };
    sax.ignorableWhitespace = sax.characters;
    sax.cdataBlock = sax.characters;
    sax.internalSubset = [](void *self, const xmlChar *, const xmlChar *, const xmlChar *) {
        of(self).rejectDoctype();
    };
    sax.serror = [](void *self, xmlErrorPtr error) { of(self).parserError(*error); };
    return sax;
}

void ValidationPass::startElement(const xmlChar *name, const xmlChar *prefix, const xmlChar *uri, int namespaceCount,
                                  const xmlChar **namespaces, int attributeCount, int defaultedCount,
                                  const xmlChar **attributes)
{
    if (m_skipped.contains(m_elementCount++) || m_skippedDepth > 0) {
        ++m_skippedDepth;
        return;
    }
    validateText();
    m_open.push(elementAt(name, uri, attributeCount, attributes));
    rememberValues(m_open.top());
    m_validation->startElementNs(m_validator, name, prefix, uri, namespaceCount, namespaces, attributeCount,
                                 defaultedCount, attributes);
}

void ValidationPass::endElement(const xmlChar *name, const xmlChar *prefix, const xmlChar *uri)
{
    if (m_skippedDepth > 0) {
        --m_skippedDepth;
        return;
    }
    validateText();
    m_validation->endElementNs(m_validator, name, prefix, uri);
    m_open.pop();
}

// A text can be reported in several pieces.
void ValidationPass::text(const xmlChar *begin, int size)
{
    if (m_skippedDepth > 0)
        return;
    const auto *end = begin + size;
    const auto *first = std::find_if(begin, end, [](xmlChar byte) { return byte > ' '; });
    if (m_text.isEmpty() && first == end)
        return;
    if (m_text.isEmpty()) {
        // The piece is in the buffer, or it is a copy of the text before the position of the parser.
        const auto *counted = begin == m_parser->input->cur ? end : m_parser->input->cur;
        m_textLocation = locationAt(counted - (end - first), counted);
    }
    m_text.append(reinterpret_cast<const char *>(begin), size);
}

void ValidationPass::validateText()
{
    if (!m_text.isEmpty())
        m_validation->characters(m_validator, asXml(m_text), m_text.size());
    m_text.clear();
}

void ValidationPass::rejectDoctype()
{
    m_diagnostics.append(
        diagnostic(locationAt(m_parser->input->cur, m_parser->input->cur),
                   QStringLiteral("found a document type declaration, expected none: the file isn't validated")));
    m_isRejected = true;
    xmlStopParser(m_parser);
}

void ValidationPass::parserError(const xmlError &error)
{
    if (m_isRejected || error.level < XML_ERR_ERROR)
        return;
    m_diagnostics.append(diagnostic({qMax(error.line, 1), qMax(error.int2, 1)}, parserMessage(error)));
    m_isRejected = true;
    xmlStopParser(m_parser);
}

void ValidationPass::validityError(const xmlError &error)
{
    if (m_isOver || m_open.isEmpty())
        return;
    auto &element = m_open.top();
    const auto attribute = uniqueAttribute(error);
    const QStringList value{element.details.name, attribute, element.details.attributes.value(attribute)};
    const int line = m_lineOfValue.value(value);
    element.details.firstLine = line == element.location.line ? 0 : line;
    element.details.text = QString::fromUtf8(m_text).simplified();
    const auto text = schemaMessage(error, element.details);
    if (isUnexpectedElement(error)) {
        m_unexpected.insert(element.number);
        m_unexpectedDiagnostics.append(diagnostic(element.location, text));
    } else if (!text.isEmpty()) {
        m_diagnostics.append(diagnostic(isUnexpectedText(error) ? m_textLocation : element.location, text));
    }
}

ValidationPass::Element ValidationPass::elementAt(const xmlChar *name, const xmlChar *uri, int attributeCount,
                                                  const xmlChar **attributes) const
{
    const auto *begin = m_parser->input->cur;
    while (begin > m_parser->input->base && *begin != '<')
        --begin;
    Element element;
    element.number = m_elementCount - 1;
    element.location = locationAt(begin, m_parser->input->cur);
    element.details.name = textOf(name);
    element.details.parent = m_open.isEmpty() ? QString() : m_open.top().details.name;
    element.details.xmlNamespace = textOf(uri);
    for (int i = 0; i < attributeCount; ++i) {
        const auto *attribute = attributes + i * FieldCount;
        element.details.attributes.insert(textOf(attribute[LocalName]),
                                          textOf(attribute[ValueBegin], attribute[ValueEnd]));
    }
    return element;
}

SourceLocation ValidationPass::locationAt(const xmlChar *position, const xmlChar *counted) const
{
    const auto *input = m_parser->input;
    const int linesBehind = static_cast<int>(std::count(position, counted, xmlChar('\n')));
    if (linesBehind == 0)
        return {input->line, input->col - characterCount(position, counted)};
    const auto *line = position;
    while (line > input->base && line[-1] != '\n')
        --line;
    return {input->line - linesBehind, characterCount(line, position) + 1};
}

void ValidationPass::rememberValues(const Element &element)
{
    const auto &attributes = element.details.attributes;
    for (auto attribute = attributes.begin(); attribute != attributes.end(); ++attribute) {
        const QStringList value{element.details.name, attribute.key(), attribute.value()};
        if (!m_lineOfValue.contains(value))
            m_lineOfValue.insert(value, element.location.line);
    }
}

Diagnostic ValidationPass::diagnostic(SourceLocation location, const QString &text) const
{
    return {m_path, location, Diagnostic::Severity::Warning, text};
}

}

Diagnostics validate(const QByteArray &data, const QString &path, const QString &schemaName)
{
    const auto schema = loadSchema(schemaName);
    if (!schema)
        return {{path, {}, Diagnostic::Severity::Error, QStringLiteral("the schema %1 can't be read").arg(schemaName)}};
    Diagnostics diagnostics;
    QSet<int> skipped;
    for (int pass = 1;; ++pass) {
        ValidationPass validation(data, path, skipped);
        validation.run(schema.get());
        diagnostics += validation.unexpectedDiagnostics();
        if (validation.unexpected().isEmpty() || pass == MaxPasses)
            return diagnostics + validation.diagnostics();
        skipped += validation.unexpected();
    }
}

}
