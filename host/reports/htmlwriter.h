#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QXmlStreamWriter>

namespace panelhost {

/// Writes an HTML page that is also well-formed XML. Only images are written as empty elements, as HTML requires.
class HtmlWriter
{
public:
    /// Begins the page. @p style must not contain quotes or angle brackets.
    HtmlWriter(const QString &title, const QString &style);

    HtmlWriter &begin(const char *tag, const char *cssClass = nullptr);
    HtmlWriter &attribute(const char *name, const QString &value);
    HtmlWriter &text(const QString &text);
    HtmlWriter &end();
    HtmlWriter &element(const char *tag, const char *cssClass, const QString &text);
    HtmlWriter &link(const QString &target, const QString &text);
    HtmlWriter &badge(const QString &word);
    HtmlWriter &image(const QByteArray &png, const QString &description);
    /// Adds a program that the page runs.
    HtmlWriter &script(const QString &program);
    QByteArray finish();

private:
    QByteArray m_page;
    QXmlStreamWriter m_xml;
};

}
