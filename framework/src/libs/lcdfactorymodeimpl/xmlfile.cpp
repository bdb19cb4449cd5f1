#include "xmlfile.h"

#include "log.h"
#include "xmllimits.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtXml/QXmlInputSource>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace LCD::FactoryModeImpl {

namespace {

enum class Opened {
    Yes,
    No,
    NoFile, ///< the path is neither a file nor a directory
};

/// Opens @p file for reading without blocking. A plain open() of a FIFO would wait for the other end.
Opened openAtOnce(QFile &file)
{
    const int descriptor = ::open(QFile::encodeName(file.fileName()).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status = {};
    if (descriptor >= 0 && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        return file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) ? Opened::Yes : Opened::No;
    if (descriptor >= 0)
        ::close(descriptor);
    if (descriptor >= 0 && !S_ISDIR(status.st_mode))
        return Opened::NoFile;
    return file.open(QIODevice::ReadOnly) ? Opened::Yes : Opened::No;
}

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

/// Returns what the parser would read from @p data: it finds out the encoding and decodes piece by piece. Ends where
/// the text is too long to be parsed.
QString decoded(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QXmlInputSource source(&buffer);
    QString text;
    text.reserve(data.size());
    for (source.fetchData(); !source.data().isEmpty() && text.size() <= XmlCharacterLimit; source.fetchData())
        text += source.data();
    return text;
}

QT_WARNING_POP

}

std::optional<QByteArray> XmlFile::read(const QString &path) const
{
    QFile file(path);
    const Opened opened = openAtOnce(file);
    if (opened == Opened::NoFile) {
        reportParseError(path, QStringLiteral("not a regular file"), 0, 0);
        return std::nullopt;
    }
    if (opened == Opened::No) {
        qCWarning(componentLog) << m_parser << "Failed to open config file:" << path << "Error:" << file.errorString();
        qCWarning(componentLog) << m_parser << "Current working directory:" << QDir::currentPath();
        return std::nullopt;
    }
    qCDebug(componentLog) << m_parser << "Config file opened successfully, file size:" << file.size() << "bytes";
    return file.read(XmlSizeLimit + 1);
}

QDomDocument XmlFile::document(const QByteArray &data, const QString &path) const
{
    if (data.size() > XmlSizeLimit) {
        reportParseError(path, QStringLiteral("the document is larger than %1 bytes").arg(XmlSizeLimit), 1, 1);
        return {};
    }
    const QString text = decoded(data);
    if (const auto violation = checkXmlLimits(text)) {
        reportParseError(path, violation->reason, violation->line, violation->column);
        return {};
    }
    QDomDocument document;
    QString error;
    int line = 0;
    int column = 0;
    if (!document.setContent(text, true, &error, &line, &column)) {
        reportParseError(path, error, line, column);
        return {};
    }
    const QDomElement root = document.documentElement();
    if (root.isNull()) {
        qCWarning(componentLog) << m_parser << "XML has no root element:" << path;
        return {};
    }
    if (root.tagName() != QLatin1String("LCD")) {
        qCWarning(componentLog) << m_parser << "Root element is not LCD, got:" << root.tagName() << "in file:" << path;
        return {};
    }
    return document;
}

void XmlFile::reportParseError(const QString &path, const QString &error, int line, int column) const
{
    qCWarning(componentLog) << m_parser << "Failed to parse XML:" << path << "Error:" << error << "at line" << line
                            << "column" << column;
}

bool XmlFile::isSupportedVersion(const QDomElement &root)
{
    const QString name = QStringLiteral("version");
    return !root.hasAttribute(name) || root.attribute(name) == QLatin1String("1.0");
}

}
