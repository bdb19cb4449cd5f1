#pragma once

#include "diagnostics/diagnostic.h"

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtXml/QDomDocument>

namespace panelhost {

/// One of the two configuration files, read as the component reads it, and the diagnostics about it so far. Errors have
/// the same wording as in the component's log, so that a line of the log can be searched for.
class ConfigFile
{
public:
    explicit ConfigFile(const QString &path);

    /// Opens and parses the file and checks its root element. Returns false if the component would reject the file.
    bool load();
    /// Adds a warning for everything that the schema @p schemaName doesn't allow.
    void validateAgainst(const QString &schemaName);
    /// Returns the first child of the root element named @p tag. Adds an error and returns null if there is none.
    QDomElement list(const QString &tag);

    void error(const QDomElement &where, const QString &text);
    void warn(const QDomElement &where, const QString &text);
    /// Returns where the start tag of @p element begins.
    SourceLocation locationOf(const QDomElement &element) const;

    const Diagnostics &diagnostics() const { return m_diagnostics; }
    QString path() const { return m_path; }

    /// Sets whether the message about a wrong version contains the version that was found.
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
