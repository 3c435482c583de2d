// Any bytes as a comment file: chains read, written and given back in turn. What is written comes
// back as long as its chain isn't touched, however damaged the free list is.
#include <algorithm>
#include <cstdlib>
#include <string>

#include "charts/comments.h"
#include "text/run_time_error.h"

namespace {

using namespace orvantis;

void ForgetErrors() {
    RunTimeError ignored;
    TakeRunTimeError(ignored);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ForgetErrors();
    // The first bytes tell what is done, the rest is the file.
    constexpr std::size_t steps = 8;
    if (size < steps) return 0;
    Bytes blocks(data + steps, data + size);
    const auto count = static_cast<std::int32_t>(blocks.size() / 32);
    for (std::int32_t ref = -1; ref <= std::min(count, 64) + 1; ++ref) {
        if (GetComment(blocks, ref).size() > 2 * kMostComment) std::abort();
    }
    for (std::size_t i = 0; i < steps; ++i) {
        const std::int32_t ref = data[i] / 2;
        if (data[i] % 2 == 0) {
            const std::size_t before = blocks.size();
            FreeComment(blocks, ref);
            if (blocks.size() != before) std::abort();
            continue;
        }
        const std::string text(static_cast<std::size_t>(ref) * 5 + 1, 'x');
        const std::int32_t first = PutComment(blocks, text);
        if (first < 2 || first > static_cast<std::int32_t>(blocks.size() / 32)) std::abort();
        if (GetComment(blocks, first) != text) std::abort();
    }
    ForgetErrors();
    return 0;
}
