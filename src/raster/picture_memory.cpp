#include "raster/picture_memory.h"

#include <cstdint>
#include <memory>
#ifdef __linux__
#include <sys/mman.h>
#endif

namespace orvantis {

namespace {

// Size of a large page, and of the least picture that is worth asking for them: below it a picture
// stays in the processor's own memory.
constexpr std::size_t kLargePage = 2 << 20;
constexpr std::size_t kLargePicture = 2 * kLargePage;

// Asks for large pages in the part of the memory that whole ones fit in. A system that has none
// says so, which changes nothing.
void PreferLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) {
#ifdef __linux__
    if (size < kLargePicture) return;
    if (std::align(kLargePage, kLargePage, memory, size) == nullptr) return;
    ::madvise(memory, size / kLargePage * kLargePage, MADV_HUGEPAGE);
#endif
}

}  // namespace

void ReservePixels(Image& image, std::size_t count) {
    if (image.pixels.capacity() >= count) return;
    image.pixels = {};
    image.pixels.reserve(count);
    PreferLargePages(image.pixels.data(), count * sizeof(std::uint32_t));
}

}  // namespace orvantis
