#include "raster/flood.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace orvantis {
namespace {

constexpr std::uint32_t kBorder = 0xFF000000;
constexpr std::uint32_t kLand = 0xFF00C000;
constexpr std::uint32_t kSea = 0xFF0000FF;
constexpr std::uint32_t kRed = 0xFFFF0000;

// "#" border, "." land, "~" sea, "x" red.
Image Drawn(const std::vector<std::string>& rows) {
    Image image;
    image.height = static_cast<int>(rows.size());
    image.width = rows.empty() ? 0 : static_cast<int>(rows[0].size());
    for (const std::string& row : rows) {
        for (const char c : row) {
            image.pixels.push_back(c == '#' ? kBorder : c == '~' ? kSea : c == 'x' ? kRed : kLand);
        }
    }
    return image;
}

std::vector<std::string> Shown(const Image& image) {
    std::vector<std::string> rows;
    for (int y = 0; y < image.height; ++y) {
        std::string row;
        for (int x = 0; x < image.width; ++x) {
            const std::uint32_t pixel = image.pixels[static_cast<std::size_t>(y) * image.width + x];
            row += pixel == kBorder ? '#'
                   : pixel == kSea  ? '~'
                   : pixel == kRed  ? 'x'
                   : pixel == kLand ? '.'
                                    : '?';
        }
        rows.push_back(row);
    }
    return rows;
}

Clip Whole(const Image& image) {
    return RectangleClip({0, 0, image.width, image.height}, image.width, image.height);
}

using Rows = std::vector<std::string>;

TEST(Flood, FillsPocketsThatAreReachedOnlyByTurningBack) {
    Image image = Drawn({"..........",  //
                         ".########.",  //
                         ".#......#.",  //
                         ".#.####.#.",  //
                         ".#.#..#.#.",  //
                         ".#.#.##.#.",  //
                         ".#.#....#.",  //
                         ".#.######.",  //
                         ".#........"});
    EXPECT_TRUE(FloodImage(image, Whole(image), 4, 4, kSea, kBorder));
    EXPECT_EQ(Shown(image), (Rows{"~~~~~~~~~~",  //
                                  "~########~",  //
                                  "~#~~~~~~#~",  //
                                  "~#~####~#~",  //
                                  "~#~#~~#~#~",  //
                                  "~#~#~##~#~",  //
                                  "~#~#~~~~#~",  //
                                  "~#~######~",  //
                                  "~#~~~~~~~~"}));
}

TEST(Flood, DoesNotPassADiagonalBorder) {
    Image image = Drawn({"...#",  //
                         "..#.",  //
                         ".#..",  //
                         "#..."});
    EXPECT_TRUE(FloodImage(image, Whole(image), 0, 0, kSea, kBorder));
    EXPECT_EQ(Shown(image), (Rows{"~~~#",  //
                                  "~~#.",  //
                                  "~#..",  //
                                  "#..."}));
}

TEST(Flood, PixelsThatHaveTheFillsColourAlreadyAreNoBorder) {
    Image image = Drawn({".~~~.",  //
                         ".~#~.",  //
                         ".~~~.",  //
                         "xx.~~"});
    EXPECT_TRUE(FloodImage(image, Whole(image), 1, 1, kSea, kBorder));
    EXPECT_EQ(Shown(image), (Rows{"~~~~~",  //
                                  "~~#~~",  //
                                  "~~~~~",  //
                                  "~~~~~"}));
}

TEST(Flood, WholePictureOfTheFillsColourEndsAndStays) {
    Image image = Drawn({"~~~~", "~~~~", "~~~~"});
    EXPECT_TRUE(FloodImage(image, Whole(image), 2, 1, kSea, kBorder));
    EXPECT_EQ(Shown(image), (Rows{"~~~~", "~~~~", "~~~~"}));
}

TEST(Flood, FillInTheBordersColourFillsJustTheRegion) {
    Image image = Drawn({"..#..", "..#..", "..#.."});
    EXPECT_TRUE(FloodImage(image, Whole(image), 0, 0, kBorder, kBorder));
    EXPECT_EQ(Shown(image), (Rows{"###..", "###..", "###.."}));
}

TEST(Flood, SeedOnABorderPixelPaintsNothing) {
    Image image = Drawn({".#.", ".#."});
    EXPECT_FALSE(FloodImage(image, Whole(image), 1, 0, kSea, kBorder));
    EXPECT_EQ(Shown(image), (Rows{".#.", ".#."}));
}

TEST(Flood, SeedOutsidePictureOrClipPaintsNothing) {
    Image image = Drawn({"...", "...", "..."});
    const Clip clip = RectangleClip({1, 1, 3, 3}, 3, 3);
    const int seeds[][2] = {{-1, 0}, {0, -1}, {3, 0}, {0, 3}, {-32768, 32767}};
    for (const auto& seed : seeds) {
        EXPECT_FALSE(FloodImage(image, Whole(image), seed[0], seed[1], kSea, kBorder));
    }
    EXPECT_FALSE(FloodImage(image, clip, 0, 0, kSea, kBorder));
    EXPECT_EQ(Shown(image), (Rows{"...", "...", "..."}));
}

TEST(Flood, StaysWithinARectangularClip) {
    Image image = Drawn({".....", ".....", ".....", "....."});
    EXPECT_TRUE(FloodImage(image, RectangleClip({1, 1, 4, 3}, 5, 4), 2, 2, kSea, kBorder));
    EXPECT_EQ(Shown(image), (Rows{".....", ".~~~.", ".~~~.", "....."}));
}

TEST(Flood, StaysWithinAnEllipticClip) {
    Image image = Drawn({"......", "......", "......", "......", "......", "......"});
    EXPECT_TRUE(FloodImage(image, EllipseClip({0, 0, 6, 6}, 6, 6), 3, 3, kSea, kBorder));
    EXPECT_EQ(Shown(image), (Rows{".~~~~.", "~~~~~~", "~~~~~~", "~~~~~~", "~~~~~~", ".~~~~."}));
}

TEST(Flood, PictureWithoutPixelsAndPictureOfOnePixel) {
    Image none;
    EXPECT_FALSE(FloodImage(none, Whole(none), 0, 0, kSea, kBorder));
    Image one = Drawn({"."});
    EXPECT_TRUE(FloodImage(one, Whole(one), 0, 0, kSea, kBorder));
    EXPECT_EQ(Shown(one), (Rows{"~"}));
}

// Against a flood by the definition: repeat until nothing changes.
TEST(Flood, AgreesWithBruteForceOnRandomPictures) {
    std::mt19937 random(4711);
    for (int run = 0; run < 2000; ++run) {
        const int width = 1 + static_cast<int>(random() % 14);
        const int height = 1 + static_cast<int>(random() % 14);
        std::vector<std::string> rows(height, std::string(width, '.'));
        for (auto& row : rows) {
            for (char& c : row) c = "...##~x"[random() % 7];
        }
        Image image = Drawn(rows);
        const int seedX = static_cast<int>(random() % width);
        const int seedY = static_cast<int>(random() % height);
        const bool elliptic = run % 3 == 0;
        const PixelBox box{0, 0, width, height};
        const Clip clip =
            elliptic ? EllipseClip(box, width, height) : RectangleClip(box, width, height);

        std::vector<std::string> reached(height, std::string(width, ' '));
        const auto free = [&](int x, int y) { return rows[y][x] != '#' && InClip(clip, x, y); };
        if (free(seedX, seedY)) reached[seedY][seedX] = '!';
        for (bool changed = true; changed;) {
            changed = false;
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    if (reached[y][x] == '!' || !free(x, y)) continue;
                    if ((x > 0 && reached[y][x - 1] == '!') ||
                        (x + 1 < width && reached[y][x + 1] == '!') ||
                        (y > 0 && reached[y - 1][x] == '!') ||
                        (y + 1 < height && reached[y + 1][x] == '!')) {
                        reached[y][x] = '!';
                        changed = true;
                    }
                }
            }
        }
        Rows expected = rows;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (reached[y][x] == '!') expected[y][x] = '~';
            }
        }
        EXPECT_EQ(FloodImage(image, clip, seedX, seedY, kSea, kBorder), free(seedX, seedY));
        ASSERT_EQ(Shown(image), expected) << "run " << run;
    }
}

}  // namespace
}  // namespace orvantis
