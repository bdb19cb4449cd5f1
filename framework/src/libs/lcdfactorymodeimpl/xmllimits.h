#pragma once

#include <QtCore/QString>

#include <optional>

namespace LCD::FactoryModeImpl {

// QDomDocument needs stack for each level of nesting. Entities, attributes and namespaces can make it use unlimited
// memory and time even for a small file. checkXmlLimits() keeps it within a stack of 256 KiB and 64 MiB of memory. It
// reads the text once, from start to end, builds nothing, and counts four things:
//
//   levels       open elements, or open brackets in a declaration. The parser takes stack for each.
//   characters   with the text of an entity in the place of each reference to it. The parser reads them all.
//   nodes        elements, runs of text, comments and so on; an attribute or a declaration counts as three of them.
//                The parser allocates each.
//   comparisons  names times the characters in them, where the parser compares each name with the others: those of the
//                attributes of an element, those of the prefixes in scope at each element, and those of the entities at
//                each declaration of one.
//
// Each count has one limit, far above what a configuration needs. QDomDocument parses a document that stays below all
// of them, with its own result and its own errors. A document that passes a limit is refused before QDomDocument sees
// it. Whether a document is well-formed is left to the parser: behind an error this check may misread the text, but the
// parser goes no further than the error and refuses the document as well.
//
// Entities have to be followed as the parser follows them. They may hold tags, or halves of tags, and they grow without
// bound where they refer to each other. So the check reads a document and the entities in it as one stream.
//
// Three other designs were weighed:
//
// - QXmlStreamReader as the scanner takes a quarter of QDomDocument's time; this check takes a thirtieth. The reader
//   stops at errors that QDomDocument accepts, such as an undeclared prefix, and can't tell what comes behind them. And
//   it compares the attributes of an element with each other itself.
// - Counting in handlers while the parser runs is exact for elements, but comes too late for attributes, brackets and
//   the entities in a value or a declaration: their handlers are called at the end of them. And a document that is
//   refused near its end has cost all the time of parsing it.
// - Counting bytes, with the longest entity for each '&', refuses documents that QDomDocument takes: a few hundred
//   references to an entity with one tag look like a few hundred levels.

/// The size of the longest file that is parsed, in bytes.
constexpr int XmlSizeLimit = 4 * 1024 * 1024;

// The limits of the four counts.
constexpr int XmlLevelLimit = 512;
constexpr int XmlCharacterLimit = 2 * 1024 * 1024;
constexpr int XmlNodeLimit = 128 * 1024;
constexpr int XmlComparisonLimit = 16 * 1024 * 1024;

/// Which limit a document passes, and where. Line and column count from 1.
struct XmlLimitViolation
{
    QString reason;
    int line;
    int column;
};

/// Returns the first limit that the document in @p text passes, or nothing. Any thread may call it.
std::optional<XmlLimitViolation> checkXmlLimits(const QString &text);

}
