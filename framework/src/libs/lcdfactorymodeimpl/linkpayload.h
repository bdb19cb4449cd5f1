#pragma once

#include "log.h"

#include <any>
#include <memory>
#include <utility>
#include <vector>

namespace LCD::FactoryModeImpl {

/// What a test says of a payload that it cannot read.
struct LinkPayloadTexts
{
    /// Followed by the name of the type that came instead.
    const char *wrongType;
    const char *nullPointer;
};

/// The records of a link report, or nullptr, with a warning, when @p payload holds something else or nothing.
template <class Record>
std::shared_ptr<std::vector<Record>> unpackLinkPayload(std::any payload, const LinkPayloadTexts &texts)
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
