#include "check/configfile.h"

#include "check/schemavalidator.h"

#include <QtCore/QDebug>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace panelhost {

namespace {

constexpr qint64 MaxSize = 1 << 20;
constexpr int MaxTags = 5000;
/// The number of tags that an entity can contain: the XML reader truncates its text to 4096 characters.
constexpr int MaxTagsOfEntity = 4096 / 3;

/// Formats text as QMessageLogger does: values separated by blanks, strings in quotes.
template <class... Parts>
QString logText(const Parts &...parts)
{
    QString text;
    QDebug stream(&text);
    (stream << ... << parts);
    return text.trimmed();
}

/// Returns an upper limit of the depth of the elements, whatever the encoding of the file.
qint64 depthBound(QByteArray data)
{
    data.replace(QByteArray(1, '\0'), QByteArray());
    const qint64 entities = data.contains("ENTITY") ? data.count('&') : 0;
    return data.count('<') + entities * MaxTagsOfEntity;
}

}

ConfigFile::ConfigFile(const QString &path) : m_path(path)
{
}

bool ConfigFile::load()
{
    return read() && isWithinBounds() && parse() && checkRoot();
}

bool ConfigFile::read()
{
    QFile file(m_path);
    // Opening a pipe would block.
    if (file.exists() && !QFileInfo(file).isFile()) {
        add({}, Diagnostic::Severity::Error, QStringLiteral("not a file"));
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        add({}, Diagnostic::Severity::Error,
            logText("Failed to open config file:", m_path, "Error:", file.errorString()));
        return false;
    }
    m_data = file.read(MaxSize + 1);
    m_lines = QString::fromUtf8(m_data).split(QLatin1Char('\n'));
    return true;
}

// The document tree is destroyed recursively: a file of nothing but start tags would overflow the stack.
bool ConfigFile::isWithinBounds()
{
    if (m_data.size() <= MaxSize && depthBound(m_data) <= MaxTags)
        return true;
    add({}, Diagnostic::Severity::Error,
        QStringLiteral("not read: larger than %1 bytes or %2 tags").arg(MaxSize).arg(MaxTags));
    return false;
}

bool ConfigFile::parse()
{
    QString message;
    SourceLocation location;
    if (m_document.setContent(m_data, true, &message, &location.line, &location.column))
        return true;
    add(location, Diagnostic::Severity::Error,
        logText("Failed to parse XML:", m_path, "Error:", message, "at line", location.line, "column",
                location.column));
    return false;
}

bool ConfigFile::checkRoot()
{
    const auto root = m_document.documentElement();
    const auto version = root.attribute(QStringLiteral("version"));
    const auto fail = [&](const QString &text) {
        error(root, text);
        return false;
    };
    if (root.isNull())
        return fail(logText("XML has no root element:", m_path));
    if (root.tagName() != QLatin1String("LCD"))
        return fail(logText("Root element is not LCD, got:", root.tagName(), "in file:", m_path));
    if (!root.hasAttribute(QStringLiteral("version")) || version == QLatin1String("1.0"))
        return true;
    return fail(m_versionMessageNamesValue ? logText("XML version is not 1.0, got:", version, "in file:", m_path)
                                           : logText("XML version is not 1.0 in file:", m_path));
}

void ConfigFile::validateAgainst(const QString &schemaName)
{
    m_diagnostics += validate(m_data, m_path, schemaName);
}

QDomElement ConfigFile::list(const QString &tag)
{
    const auto root = m_document.documentElement();
    const auto list = root.firstChildElement(tag);
    if (list.isNull())
        error(root, logText(qUtf8Printable(QStringLiteral("No %1 element found in:").arg(tag)), m_path));
    return list;
}

void ConfigFile::error(const QDomElement &where, const QString &text)
{
    add(locationOf(where), Diagnostic::Severity::Error, text);
}

void ConfigFile::warn(const QDomElement &where, const QString &text)
{
    add(locationOf(where), Diagnostic::Severity::Warning, text);
}

// QDomElement gives the end of the start tag. There is no other '<' between its beginning and its end.
SourceLocation ConfigFile::locationOf(const QDomElement &element) const
{
    SourceLocation location{element.lineNumber(), element.columnNumber()};
    if (location.line < 1 || location.line > m_lines.size())
        return {};
    int begin = m_lines.at(location.line - 1).lastIndexOf(QLatin1Char('<'), location.column - 1);
    while (begin < 0 && location.line > 1)
        begin = m_lines.at(--location.line - 1).lastIndexOf(QLatin1Char('<'));
    return {location.line, qMax(begin, 0) + 1};
}

void ConfigFile::add(SourceLocation location, Diagnostic::Severity severity, const QString &text)
{
    m_diagnostics.append({m_path, location, severity, text});
}

QList<QDomElement> childrenOf(const QDomElement &parent, const QString &tag)
{
    QList<QDomElement> children;
    for (auto child = parent.firstChildElement(tag); !child.isNull(); child = child.nextSiblingElement(tag))
        children.append(child);
    return children;
}

}
