#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace LCD::FactoryModeImpl {

// QDomDocument takes its stack for each level of nesting, and memory and time without bound for what entities,
// attributes and namespaces make of a small file. These limits hold it within a thread's stack of 256 KiB, 64 MiB and
// a second. A file of a configuration's size and depth is far from all of them.

/// The longest document that is parsed, in bytes.
constexpr int XmlSizeLimit = 4 * 1024 * 1024;
/// Levels of elements, and of brackets in a document type.
constexpr int XmlDepthLimit = 512;

/// Why a document is not given to the parser, and the place where it passed the limit, counted from 1.
struct XmlExcess
{
    QString reason;
    int line;
    int column;
};

/// Looks through @p data once, without building anything. Never says less of a well-formed document than the parser
/// makes of it; whether it is well-formed is the parser's affair.
std::optional<XmlExcess> findXmlExcess(const QByteArray &data);

}
