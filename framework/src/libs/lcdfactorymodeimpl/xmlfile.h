#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtXml/QDomDocument>

#include <optional>

namespace LCD::FactoryModeImpl {

/// Opens, reads and checks a configuration file, for both parsers. Each log line begins with the name of the parser,
/// such as "[FactoryMenuConfigParser]". May be used on any thread.
class XmlFile
{
public:
    explicit constexpr XmlFile(const char *parser) : m_parser(parser) {}

    /// Returns the content of the file, or nothing after a warning. If the file is too large to be parsed, reads only
    /// its beginning. A path that is neither a file nor a directory is refused, because reading from it might never
    /// end.
    std::optional<QByteArray> read(const QString &path) const;

    /// Returns the document in @p data if its root element is <LCD>, or a null document after a warning. @p path is
    /// used in log lines only.
    QDomDocument document(const QByteArray &data, const QString &path) const;

    /// Returns whether @p root has the version "1.0" or no version.
    static bool isSupportedVersion(const QDomElement &root);

private:
    void reportParseError(const QString &path, const QString &error, int line, int column) const;

    const char *m_parser;
};

}
