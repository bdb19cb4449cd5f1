#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace LCD::FactoryModeImpl {

/// A 32-bit field of a host's record by its place: the place is what host and component agree on, and each SDK has
/// names of its own. The compiler makes a plain load of it.
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
