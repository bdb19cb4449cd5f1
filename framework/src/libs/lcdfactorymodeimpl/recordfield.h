#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace LCD::FactoryModeImpl {

/// Returns the 32-bit field at byte @p Offset of a host's record. Host and component agree on the offset only; the
/// names of the fields differ between SDKs. The compiler turns the call into a plain load.
template <std::size_t Offset, class Record>
std::int32_t field(const Record &record)
{
    static_assert(std::is_trivially_copyable_v<Record> && Offset + sizeof(std::int32_t) <= sizeof(Record));
    std::int32_t value = 0;
    std::memcpy(&value, reinterpret_cast<const char *>(&record) + Offset, sizeof(value));
    return value;
}

template <std::size_t Offset, class Record>
void setField(Record &record, std::int32_t value)
{
    static_assert(std::is_trivially_copyable_v<Record> && Offset + sizeof(std::int32_t) <= sizeof(Record));
    std::memcpy(reinterpret_cast<char *>(&record) + Offset, &value, sizeof(value));
}

}
