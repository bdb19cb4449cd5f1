#pragma once

#include "log.h"

#include <any>
#include <memory>
#include <utility>
#include <vector>

namespace LCD::FactoryModeImpl {

/// The warnings of a test about a payload that it can't read.
struct LinkPayloadTexts
{
    /// Followed by the name of the actual type.
    const char *wrongType;
    const char *nullPointer;
};

/// Returns the records of a link report. Warns and returns nullptr if @p payload is empty, holds another type or holds
/// a null pointer.
template <class Record>
std::shared_ptr<std::vector<Record>> unpackLinkPayload(std::any &&payload, const LinkPayloadTexts &texts)
{
    auto *records = std::any_cast<std::shared_ptr<std::vector<Record>>>(&payload);
    if (!records) {
        qCWarning(componentLog) << texts.wrongType << payload.type().name();
        return nullptr;
    }
    if (!*records)
        qCWarning(componentLog) << texts.nullPointer;
    return std::move(*records);
}

}
