#include "check/schemamessage.h"

#include "diagnostics/excerpt.h"

#include <QtCore/QRegularExpression>

namespace panelhost {

namespace {

constexpr int MaxQuotedText = 40;

/// The library's message with names as people write them: "xml:lang" for "{http://www.w3.org/XML/1998/namespace}lang".
QString messageOf(const xmlError &error)
{
    return QString::fromUtf8(error.message)
        .simplified()
        .replace(QLatin1String("{http://www.w3.org/XML/1998/namespace}"), QLatin1String("xml:"))
        .replace(QLatin1String("{http://www.w3.org/2001/XMLSchema-instance}"), QLatin1String("xsi:"));
}

/// The first group of @p pattern in the library's message.
QString captured(const xmlError &error, const QString &pattern)
{
    return QRegularExpression(pattern).match(messageOf(error)).captured(1);
}

QString quoted(const QString &text)
{
    const auto shown = text.size() > MaxQuotedText ? beginningOf(text, MaxQuotedText) + QStringLiteral("...") : text;
    return QLatin1Char('"') + shown + QLatin1Char('"');
}

QString attributeOf(const xmlError &error)
{
    return captured(error, QStringLiteral("attribute '([^']*)'"));
}

QString attributesFor(const QString &element)
{
    static const QHash<QString, QString> attributes{
        {QStringLiteral("LCD"), QStringLiteral("version")},
        {QStringLiteral("MenuItem"), QStringLiteral("Key")},
        {QStringLiteral("LcdKey"), QStringLiteral("Value or Name")},
    };
    return attributes.value(element, QStringLiteral("no attribute"));
}

QString valuesOf(const QString &attribute)
{
    static const QHash<QString, QString> values{
        {QStringLiteral("Key"), QStringLiteral("names separated by dots, such as em.factorytest.Net")},
        {QStringLiteral("key"), QStringLiteral("names separated by dots, such as em.factorytest.Net")},
        {QStringLiteral("Value"), QStringLiteral("a decimal number from 0 to 2147483647")},
    };
    return values.value(attribute, QStringLiteral("another value"));
}

QString unexpectedElement(const xmlError &error, const SchemaElement &element)
{
    const auto expected = captured(error, QStringLiteral("Expected is (?:one of )?\\( (.*) \\)"));
    const auto found = QStringLiteral("found element %1, expected %2").arg(quoted(element.name));
    return found.arg(expected.isEmpty() ? QStringLiteral("the end of ") + element.parent : expected);
}

QString wrongNamespace(const SchemaElement &element)
{
    return QStringLiteral("found %1 in the namespace %2, expected no namespace")
        .arg(element.name, quoted(element.xmlNamespace));
}

QString unknownAttribute(const xmlError &error, const SchemaElement &element)
{
    return QStringLiteral("found attribute %1 of %2, expected %3")
        .arg(quoted(attributeOf(error)), element.name, attributesFor(element.name));
}

QString missingAttribute(const xmlError &error, const SchemaElement &element)
{
    const auto attribute = captured(error, QStringLiteral("The attribute '([^']*)'"));
    return QStringLiteral("found %1 without %2, expected %3").arg(element.name, attribute, valuesOf(attribute));
}

QString wrongValue(const xmlError &error, const SchemaElement &element)
{
    const auto attribute = attributeOf(error);
    return QStringLiteral("found %1 %2, expected %3")
        .arg(attribute, quoted(element.attributes.value(attribute)), valuesOf(attribute));
}

QString repeatedValue(const xmlError &error, const SchemaElement &element)
{
    const auto attribute = uniqueAttribute(error);
    const auto first =
        element.firstLine > 0 ? QStringLiteral(" (the first is in line %1)").arg(element.firstLine) : QString();
    return QStringLiteral("found %1 %2 a second time%3, expected each %1 once")
        .arg(attribute, quoted(element.attributes.value(attribute)), first);
}

QString unexpectedText(const SchemaElement &element)
{
    return QStringLiteral("found text %1 in %2, expected none").arg(quoted(element.text), element.name);
}

bool isMissingElement(const xmlError &error)
{
    return messageOf(error).contains(QLatin1String("Missing child element"));
}

}

QString schemaMessage(const xmlError &error, const SchemaElement &element)
{
    switch (error.code) {
    case XML_SCHEMAV_ELEMENT_CONTENT:
        // A missing list is already rejected by the component.
        return isMissingElement(error) ? QString() : unexpectedElement(error, element);
    case XML_SCHEMAV_CVC_ELT_1:
        return wrongNamespace(element);
    case XML_SCHEMAV_CVC_COMPLEX_TYPE_3_2_1:
        return unknownAttribute(error, element);
    case XML_SCHEMAV_CVC_COMPLEX_TYPE_4:
        return missingAttribute(error, element);
    case XML_SCHEMAV_CVC_COMPLEX_TYPE_2_1:
        return isUnexpectedText(error) ? unexpectedText(element) : unexpectedElement(error, element);
    case XML_SCHEMAV_CVC_COMPLEX_TYPE_2_3:
        return unexpectedText(element);
    case XML_SCHEMAV_CVC_DATATYPE_VALID_1_2_1:
    case XML_SCHEMAV_CVC_PATTERN_VALID:
    case XML_SCHEMAV_CVC_MININCLUSIVE_VALID:
        return wrongValue(error, element);
    case XML_SCHEMAV_CVC_IDC:
        // Also raised for a value that isn't valid and so can't be compared.
        return uniqueAttribute(error).isEmpty() ? QString() : repeatedValue(error, element);
    default:
        return messageOf(error);
    }
}

QString parserMessage(const xmlError &error)
{
    const auto message = messageOf(error);
    switch (error.code) {
    case XML_ERR_UNSUPPORTED_ENCODING:
    case XML_ERR_UNKNOWN_ENCODING:
        return QStringLiteral("found encoding %1, expected a known one such as UTF-8")
            .arg(quoted(message.section(QLatin1Char(' '), -1)));
    case XML_ERR_INVALID_CHAR:
    case XML_ERR_INVALID_ENCODING:
        return QStringLiteral("found bytes that are invalid in the encoding of the file");
    default:
        return QStringLiteral("found what XML doesn't allow: ") + message;
    }
}

bool isUnexpectedElement(const xmlError &error)
{
    return (error.code == XML_SCHEMAV_ELEMENT_CONTENT && !isMissingElement(error))
        || (error.code == XML_SCHEMAV_CVC_COMPLEX_TYPE_2_1 && !isUnexpectedText(error));
}

// An element that must be empty gives one code for text and elements.
bool isUnexpectedText(const xmlError &error)
{
    return error.code == XML_SCHEMAV_CVC_COMPLEX_TYPE_2_3
        || (error.code == XML_SCHEMAV_CVC_COMPLEX_TYPE_2_1
            && messageOf(error).contains(QLatin1String("Character content")));
}

QString uniqueAttribute(const xmlError &error)
{
    return error.code == XML_SCHEMAV_CVC_IDC ? captured(error, QStringLiteral("'Unique([^']*)'")) : QString();
}

}
