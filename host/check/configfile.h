#pragma once

#include "diagnostics/diagnostic.h"

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtXml/QDomDocument>

namespace panelhost {

/// One of the two configuration files, read as the component reads it, with the diagnostics made so far. What the
/// component's parsers refuse is said in their words, so that a line of the component's log can be searched for.
class ConfigFile
{
public:
    explicit ConfigFile(const QString &path);

    /// Opens and parses the file and looks at its root. False if the component would refuse it.
    bool load();
    /// Adds what the schema by that name doesn't allow.
    void validateAgainst(const QString &schemaName);
    /// The first child of the root by that name; null, with an error, if there is none.
    QDomElement list(const QString &tag);

    void error(const QDomElement &where, const QString &text);
    void warn(const QDomElement &where, const QString &text);
    /// Where the start tag of @p element begins.
    SourceLocation locationOf(const QDomElement &element) const;

    const Diagnostics &diagnostics() const { return m_diagnostics; }
    QString path() const { return m_path; }

    /// True if only this file's version message names the value found.
    void setVersionMessageNamesValue(bool names) { m_versionMessageNamesValue = names; }

private:
    bool read();
    bool parse();
    bool checkRoot();
    bool isWithinBounds();
    void add(SourceLocation location, Diagnostic::Severity severity, const QString &text);

    QString m_path;
    QByteArray m_data;
    QStringList m_lines;
    QDomDocument m_document;
    Diagnostics m_diagnostics;
    bool m_versionMessageNamesValue = false;
};

/// The children of @p parent by that name, in order.
QList<QDomElement> childrenOf(const QDomElement &parent, const QString &tag);

}
