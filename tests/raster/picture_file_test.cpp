#include "raster/picture_file.h"

#include <QImage>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>

#include "support/temp_folder.h"

namespace orvantis {
namespace {

Image SomePicture(int width, int height) {
    std::mt19937 random(99);
    Image image;
    image.width = width;
    image.height = height;
    for (int i = 0; i < width * height; ++i) {
        image.pixels.push_back(0xFF000000 | static_cast<std::uint32_t>(random() & 0xFFFFFF));
    }
    return image;
}

TEST(PictureFile, BitmapComesBackAsItWas) {
    const TempFolder folder;
    const Image image = SomePicture(13, 7);
    ASSERT_TRUE(SaveImage(folder.File("a.bmp"), image));
    Image back;
    ASSERT_TRUE(LoadImage(folder.File("a.bmp"), back));
    EXPECT_EQ(back.width, 13);
    EXPECT_EQ(back.height, 7);
    EXPECT_EQ(back.pixels, image.pixels);
}

TEST(PictureFile, PngHoldsThePixels) {
    const TempFolder folder;
    for (const int width : {1, 13, 200}) {
        const Image image = SomePicture(width, 7);
        ASSERT_TRUE(SavePng(folder.File("a.png"), image));
        const QImage read = QImage(QString::fromStdString(folder.File("a.png")))
                                .convertToFormat(QImage::Format_RGB32);
        ASSERT_EQ(read.width(), width);
        ASSERT_EQ(read.height(), 7);
        for (int y = 0; y < 7; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(read.pixel(x, y), image.pixels[static_cast<std::size_t>(y) * width + x]);
            }
        }
    }
}

TEST(PictureFile, PictureWithoutPixelsIsNotWritten) {
    const TempFolder folder;
    EXPECT_FALSE(SavePng(folder.File("a.png"), Image()));
    EXPECT_FALSE(SaveImage(folder.File("a.bmp"), Image()));
    EXPECT_FALSE(std::filesystem::exists(folder.File("a.png")));
}

TEST(PictureFile, FolderThatIsNotThereIsAFailureAndLeavesNothingBehind) {
    const TempFolder folder;
    EXPECT_FALSE(SavePng(folder.File("none/a.png"), SomePicture(2, 2)));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(PictureFile, WritingLeavesJustTheFile) {
    const TempFolder folder;
    folder.Write("a.png", std::string_view("old"));
    ASSERT_TRUE(SavePng(folder.File("a.png"), SomePicture(2, 2)));
    int files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        ++files;
    }
    EXPECT_EQ(files, 1);
}

TEST(PictureFile, MissingEmptyTruncatedAndRandomBitmapsAreRefused) {
    const TempFolder folder;
    Image image = SomePicture(2, 2);
    const Image before = image;
    EXPECT_FALSE(LoadImage(folder.File("none.bmp"), image));
    EXPECT_FALSE(LoadImage(folder.Write("empty.bmp", std::string_view()), image));
    EXPECT_FALSE(LoadImage(folder.Write("text.bmp", std::string_view("no picture")), image));
    EXPECT_FALSE(LoadImage(folder.Path(), image));

    ASSERT_TRUE(SaveImage(folder.File("a.bmp"), SomePicture(40, 30)));
    const Bytes whole = FileBytes(folder.File("a.bmp"));
    for (std::size_t length = 0; length < whole.size(); length += 37) {
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(LoadImage(folder.Write("cut.bmp", part), image)) << length;
    }
    EXPECT_EQ(image.pixels, before.pixels);
}

TEST(PictureFile, HostileSizesAreRefusedWithoutTheMemoryForThem) {
    const TempFolder folder;
    ASSERT_TRUE(SaveImage(folder.File("a.bmp"), SomePicture(4, 4)));
    Bytes bytes = FileBytes(folder.File("a.bmp"));
    Image image;
    for (const std::int32_t size : {0, 32768, 0x7FFFFFFF, -32768, INT32_MIN, 30000}) {
        PutI32(bytes.data() + 18, size);
        PutI32(bytes.data() + 22, size);
        EXPECT_FALSE(LoadImage(folder.Write("b.bmp", bytes), image)) << size;
    }
}

TEST(PictureFile, ABitmapOfFewBitsAPixelIsRefused) {
    const TempFolder folder;
    Bytes bytes(62 + 4 * 8);
    bytes[0] = 'B';
    bytes[1] = 'M';
    PutU32(&bytes[10], 62);
    PutI32(&bytes[18], 8);
    PutI32(&bytes[22], 8);
    PutU16(&bytes[28], 1);
    Image image;
    EXPECT_FALSE(LoadImage(folder.Write("one-bit.bmp", bytes), image));
}

}  // namespace
}  // namespace orvantis
