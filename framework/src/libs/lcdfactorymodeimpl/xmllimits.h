#pragma once

#include <QtCore/QString>

#include <optional>

namespace LCD::FactoryModeImpl {

// QDomDocument needs stack for each level of nesting. Entities, attributes and namespaces can make it use unlimited
// memory and time even for a small file. checkXmlLimits() keeps it within 256 KiB of stack and 64 MiB of memory. It
// reads the text once, from start to end, builds nothing, and counts four things:
//
//   levels       open elements, or open brackets in a declaration. The parser uses stack for each one.
//   characters   each reference to an entity counts as the text of the entity. The parser reads all of them.
//   nodes        elements, runs of text, comments and so on; an attribute or a declaration counts as three. The parser
//                allocates memory for each one.
//   comparisons  where the parser compares names with each other: the number of names times the number of characters in
//                all of them. It compares the attributes of an element, the prefixes in scope at an element, and the
//                entities at each declaration of an entity.
//
// Each count has one limit, far above what a configuration needs. A document that stays below all limits is parsed by
// QDomDocument, with its own result and its own errors. A document that exceeds a limit is rejected before QDomDocument
// sees it. The check doesn't decide whether a document is well-formed. After an error it may misread the text, but then
// the parser stops at the error and rejects the document as well.
//
// Entities have to be followed as the parser follows them. They may contain tags, or parts of tags, and they grow
// without limit if they refer to each other. Therefore the check reads a document and its entities as one stream.
//
// Three other designs were considered:
//
// - QXmlStreamReader as the scanner takes a quarter of QDomDocument's time; this check takes a thirtieth. The reader
//   stops at errors that QDomDocument accepts, such as an undeclared prefix, and can't tell what comes after them. It
//   also compares the attributes of an element pairwise, which costs the same time.
// - Handlers that count while the parser runs are exact for elements. For attributes, brackets and entities they are
//   called only at the end of the tag or of the declaration, which is too late. And a document that is rejected near
//   its end has taken almost all of the parsing time.
// - Counting bytes, with the longest entity for each '&', rejects documents that QDomDocument accepts: a few hundred
//   references to an entity with one tag look like a few hundred levels.

/// The size of the longest file that is parsed, in bytes.
constexpr int XmlSizeLimit = 4 * 1024 * 1024;

// The limits of the four counts.
constexpr int XmlLevelLimit = 512;
constexpr int XmlCharacterLimit = 2 * 1024 * 1024;
constexpr int XmlNodeLimit = 128 * 1024;
constexpr int XmlComparisonLimit = 16 * 1024 * 1024;

/// The limit that a document exceeds, and where. Line and column are counted from 1.
struct XmlLimitViolation
{
    QString reason;
    int line;
    int column;
};

/// Returns the first limit that the document in @p text exceeds; nothing if it exceeds none. Thread-safe.
std::optional<XmlLimitViolation> checkXmlLimits(const QString &text);

}
