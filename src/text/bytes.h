// Bytes of files to values and back: little-endian numbers and blank-padded text, with no
// alignment gaps. Every record reader and writer of the program goes through these.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace orvantis {

using Bytes = std::vector<std::uint8_t>;

/// Values in the bytes of a file, the lowest byte first whatever the machine: integers of 16, 32
/// and 64 bits, signed ones in two's complement, and IEEE 754 numbers of 32 and 64 bits. `p` must
/// have as many bytes; it needs no alignment.
inline std::uint16_t GetU16(const std::uint8_t* p) {
    return static_cast<std::uint16_t>(p[0] | p[1] << 8);
}
inline std::int16_t GetI16(const std::uint8_t* p) {
    return static_cast<std::int16_t>(GetU16(p));
}
inline std::uint32_t GetU32(const std::uint8_t* p) {
    return GetU16(p) | static_cast<std::uint32_t>(GetU16(p + 2)) << 16;
}
inline std::int32_t GetI32(const std::uint8_t* p) {
    return static_cast<std::int32_t>(GetU32(p));
}
inline std::uint64_t GetU64(const std::uint8_t* p) {
    return GetU32(p) | static_cast<std::uint64_t>(GetU32(p + 4)) << 32;
}
inline float GetF32(const std::uint8_t* p) {
    return std::bit_cast<float>(GetU32(p));
}
inline double GetF64(const std::uint8_t* p) {
    return std::bit_cast<double>(GetU64(p));
}

inline void PutU16(std::uint8_t* p, std::uint16_t value) {
    p[0] = static_cast<std::uint8_t>(value);
    p[1] = static_cast<std::uint8_t>(value >> 8);
}
inline void PutI16(std::uint8_t* p, std::int16_t value) {
    PutU16(p, static_cast<std::uint16_t>(value));
}
inline void PutU32(std::uint8_t* p, std::uint32_t value) {
    PutU16(p, static_cast<std::uint16_t>(value));
    PutU16(p + 2, static_cast<std::uint16_t>(value >> 16));
}
inline void PutI32(std::uint8_t* p, std::int32_t value) {
    PutU32(p, static_cast<std::uint32_t>(value));
}
inline void PutU64(std::uint8_t* p, std::uint64_t value) {
    PutU32(p, static_cast<std::uint32_t>(value));
    PutU32(p + 4, static_cast<std::uint32_t>(value >> 32));
}
inline void PutF32(std::uint8_t* p, float value) {
    PutU32(p, std::bit_cast<std::uint32_t>(value));
}
inline void PutF64(std::uint8_t* p, double value) {
    PutU64(p, std::bit_cast<std::uint64_t>(value));
}

/// Fixed-length text as it stands, blanks included.
inline std::string GetText(const std::uint8_t* p, std::size_t width) {
    return {reinterpret_cast<const char*>(p), width};
}

/// Writes `width` bytes: the text, cut or padded with blanks.
inline void PutText(std::uint8_t* p, std::size_t width, std::string_view text) {
    const std::size_t used = text.size() < width ? text.size() : width;
    std::memcpy(p, text.data(), used);
    std::memset(p + used, ' ', width - used);
}

}  // namespace orvantis
