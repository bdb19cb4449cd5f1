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
    int firstLine = 0; ///< line where a value that must be unique occurred first; 0 if unknown
};

/// Returns a message that says what was found and what was expected. Empty if the cause of the error has already been
/// reported.
QString schemaMessage(const xmlError &error, const SchemaElement &element);

/// Returns what is wrong with a file that the XML parser rejects.
QString parserMessage(const xmlError &error);

/// Returns whether the element itself isn't allowed at its position.
bool isUnexpectedElement(const xmlError &error);
/// Returns whether the error is about text between the tags.
bool isUnexpectedText(const xmlError &error);
/// Returns the name of the attribute whose value must be unique but is a duplicate; empty if the error is about
/// something else.
QString uniqueAttribute(const xmlError &error);

}
