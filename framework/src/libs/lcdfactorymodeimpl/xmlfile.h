#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtXml/QDomDocument>

#include <optional>

namespace LCD::FactoryModeImpl {

/// What the two configuration files have in common: they are opened, read and checked in the same way. Holds the name
/// that begins each of its log lines, such as "[FactoryMenuConfigParser]". Any thread may use it.
class XmlFile
{
public:
    explicit constexpr XmlFile(const char *parser) : m_parser(parser) {}

    /// All of the file, or nothing after a warning. Of a file too large to be parsed only the beginning is read, and
    /// what is neither a file nor a directory is not opened at all: it might never end.
    std::optional<QByteArray> read(const QString &path) const;

    /// The document in @p data if its root is an <LCD>; a null one after a warning. @p path serves in log lines only.
    QDomDocument document(const QByteArray &data, const QString &path) const;

    /// A root may say no version; if it says one it must be "1.0".
    static bool isSupportedVersion(const QDomElement &root);

private:
    void reportParseError(const QString &path, const QString &error, int line, int column) const;

    const char *m_parser;
};

}
