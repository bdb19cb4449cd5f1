#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

#include <libxml/xmlerror.h>

namespace panelhost {

/// The element that a schema error is about.
struct SchemaElement
{
    QString name;
    QString parent;       ///< empty for the root
    QString xmlNamespace; ///< empty: none
    QHash<QString, QString> attributes;
    QString text;      ///< the text that is being validated, without line breaks
    int firstLine = 0; ///< where a value that must be unique stood first; 0 if unknown
};

/// Returns a message that says what was found and what was expected. Empty if the cause of the error is reported
/// already.
QString schemaMessage(const xmlError &error, const SchemaElement &element);

/// Returns what is wrong with a file that the XML parser refuses.
QString parserMessage(const xmlError &error);

/// True if the element itself may not stand where it does.
bool isUnexpectedElement(const xmlError &error);
/// True if the error is about text between the tags.
bool isUnexpectedText(const xmlError &error);
/// Returns the attribute whose value stands a second time; empty if the error is about something else.
QString uniqueAttribute(const xmlError &error);

}
