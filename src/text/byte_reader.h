// A walk through bytes in memory whose counts and lengths aren't to be trusted.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "text/bytes.h"

namespace orvantis {

/// Once something isn't there any more the walk has failed for good.
struct ByteReader {
    const Bytes& bytes;
    std::size_t at = 0;  ///< at most bytes.size()
    bool failed = false;

    std::int64_t Left() const { return static_cast<std::int64_t>(bytes.size() - at); }

    /// The next `size` bytes, 0 or more; null, and nothing is taken, if they aren't there.
    const std::uint8_t* Take(std::int64_t size) {
        if (failed || size > Left()) {
            failed = true;
            return nullptr;
        }
        const std::uint8_t* p = bytes.data() + at;
        at += static_cast<std::size_t>(size);
        return p;
    }

    /// A count, signed 32-bit, of things that take at least `least` bytes each; below 0 it is 0.
    /// One that the bytes that are left can't hold fails.
    std::int32_t TakeCount(std::int64_t least) {
        const std::uint8_t* p = Take(4);
        if (p == nullptr) return 0;
        const std::int32_t count = std::max(GetI32(p), 0);
        if (count > Left() / least) failed = true;
        return failed ? 0 : count;
    }

    /// A length, signed 32-bit, and a text of that length.
    std::string TakeText() {
        const std::int32_t length = TakeCount(1);
        const std::uint8_t* p = Take(length);
        return p == nullptr ? "" : GetText(p, static_cast<std::size_t>(length));
    }
};

}  // namespace orvantis
