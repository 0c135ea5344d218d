// Managed names and limits of the eight integer types, shared by the integer
// converters and the decimal-tuple reader.
#pragma once

#include <cstdint>
#include <limits>

template <typename T>
struct ClrIntTraits;
template <>
struct ClrIntTraits<int8_t> {
    static constexpr const char* name = "SByte";
};
template <>
struct ClrIntTraits<uint8_t> {
    static constexpr const char* name = "Byte";
};
template <>
struct ClrIntTraits<int16_t> {
    static constexpr const char* name = "Int16";
};
template <>
struct ClrIntTraits<uint16_t> {
    static constexpr const char* name = "UInt16";
};
template <>
struct ClrIntTraits<int32_t> {
    static constexpr const char* name = "Int32";
};
template <>
struct ClrIntTraits<uint32_t> {
    static constexpr const char* name = "UInt32";
};
template <>
struct ClrIntTraits<int64_t> {
    static constexpr const char* name = "Int64";
};
template <>
struct ClrIntTraits<uint64_t> {
    static constexpr const char* name = "UInt64";
};
