#include "reports/htmlwriter.h"

#include "reports/xmltext.h"

namespace panelhost {

HtmlWriter::HtmlWriter(const QString &title, const QString &style) : m_xml(&m_page)
{
    m_xml.writeDTD(QStringLiteral("<!DOCTYPE html>"));
    begin("html").attribute("lang", QStringLiteral("en"));
    begin("head");
    m_xml.writeEmptyElement(QStringLiteral("meta"));
    attribute("charset", QStringLiteral("utf-8"));
    element("title", nullptr, title);
    element("style", nullptr, style);
    end();
    begin("body");
}

HtmlWriter &HtmlWriter::begin(const char *tag, const char *cssClass)
{
    m_xml.writeStartElement(QString::fromLatin1(tag));
    return cssClass ? attribute("class", QString::fromLatin1(cssClass)) : *this;
}

HtmlWriter &HtmlWriter::attribute(const char *name, const QString &value)
{
    m_xml.writeAttribute(QString::fromLatin1(name), xmlText(value));
    return *this;
}

HtmlWriter &HtmlWriter::text(const QString &text)
{
    m_xml.writeCharacters(xmlText(text));
    return *this;
}

HtmlWriter &HtmlWriter::end()
{
    m_xml.writeEndElement();
    return *this;
}

// Closes the start tag even if the text is empty, so that the element gets an end tag.
HtmlWriter &HtmlWriter::element(const char *tag, const char *cssClass, const QString &text)
{
    return begin(tag, cssClass).text(text).end();
}

HtmlWriter &HtmlWriter::link(const QString &target, const QString &text)
{
    return begin("a").attribute("href", target).text(text).end();
}

HtmlWriter &HtmlWriter::badge(const QString &word)
{
    return begin("span").attribute("class", QStringLiteral("badge ") + word).text(word).end();
}

HtmlWriter &HtmlWriter::image(const QByteArray &png, const QString &description)
{
    m_xml.writeEmptyElement(QStringLiteral("img"));
    attribute("alt", description);
    return attribute("src", QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.toBase64()));
}

// HTML doesn't decode entities in a script, and XML needs them: the comments hide the CDATA section from the program.
HtmlWriter &HtmlWriter::script(const QString &program)
{
    begin("script").text(QStringLiteral("//"));
    m_xml.writeCDATA(QLatin1Char('\n') + program + QStringLiteral("\n//"));
    return end();
}

QByteArray HtmlWriter::finish()
{
    m_xml.writeEndDocument();
    return m_page;
}

}
