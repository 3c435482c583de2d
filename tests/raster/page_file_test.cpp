#include "raster/page_file.h"

#include <QByteArray>
#include <QXmlStreamReader>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sys/resource.h>
#include <sys/stat.h>

#include "map/map_document.h"
#include "map/plot.h"
#include "map/point_database.h"
#include "raster/page_surface.h"
#include "raster/picture_file.h"
#include "session/session_state.h"
#include "session/settings.h"
#include "support/paths.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 400;

// While it lives no file grows beyond a size, as on a full disk.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        signal_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit before_{};
    void (*signal_)(int) = SIG_DFL;
};

// A page with one of everything.
void DrawAll(DrawingSurface& surface) {
    surface.Clear(0x00FF00);
    surface.SetPen({});
    surface.Rectangle(10, 10, 90, 90, {});
    surface.FloodFill(20, 20, 0xFF0000, 0);
    surface.ClipToEllipse(0, 0, 80, 80);
    surface.SetPen({2, LineDash::DashDot, 0x0000FF, true});
    surface.MoveTo(0, 0);
    surface.LineTo(100, 100);
    surface.ClipToRectangle(0, 0, 95, 95);
    surface.Polygon({{1, 1}, {50, 5}, {20, 60}}, {FillKind::DiagonalCross, 0x123456}, true);
    surface.ClearClip();
    surface.SelectFont({"QX Symbol", 9});
    surface.TextOut(30, 30, "A<&>\xB8\xB9\xA8", TextAlign::Left);
    surface.Ellipse(40, 40, 60, 60, {FillKind::Solid, 0xFFFFFF});
}

// What an SVG holds: how often each element, and every name that is defined or referred to.
struct SvgContents {
    bool wellFormed = false;
    std::map<std::string, int> elements;
    std::set<std::string> defined;
    std::set<std::string> used;
    std::string width;
    std::string height;
};

SvgContents ReadSvg(const Bytes& bytes) {
    SvgContents contents;
    QXmlStreamReader xml(QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                    static_cast<qsizetype>(bytes.size())));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        ++contents.elements[xml.name().toString().toStdString()];
        if (xml.name() == u"svg") {
            contents.width = attributes.value("width").toString().toStdString();
            contents.height = attributes.value("height").toString().toStdString();
        }
        if (attributes.hasAttribute("id")) {
            contents.defined.insert(attributes.value("id").toString().toStdString());
        }
        const QString clip = attributes.value("clip-path").toString();
        if (!clip.isEmpty()) contents.used.insert(clip.mid(5, clip.size() - 6).toStdString());
        if (xml.name() == u"use") {
            const auto link = attributes.value("http://www.w3.org/1999/xlink", "href");
            contents.used.insert(link.mid(1).toString().toStdString());
        }
    }
    contents.wellFormed = !xml.hasError();
    return contents;
}

TEST(PageFile, SvgIsWellFormedAndDefinesWhatItRefersTo) {
    const TempFolder folder;
    PageSurface page(100, 100, 96, PageFloods::Beneath);
    DrawAll(page);
    ASSERT_TRUE(SaveSvg(folder.File("a.svg"), page.Record()));
    const SvgContents svg = ReadSvg(FileBytes(folder.File("a.svg")));
    EXPECT_TRUE(svg.wellFormed);
    EXPECT_EQ(svg.width, "100");
    EXPECT_EQ(svg.height, "100");
    EXPECT_EQ(svg.elements.at("image"), 1);
    EXPECT_EQ(svg.elements.at("clipPath"), 3) << "two clips and the hatched shape";
    EXPECT_EQ(svg.elements.at("use"), 7);
    EXPECT_EQ(svg.elements.count("text"), 0U) << "letters are outlines";
    EXPECT_EQ(svg.defined, svg.used);
}

TEST(PageFile, SvgOfAPageWithoutFloodsHoldsNoPicture) {
    const TempFolder folder;
    PageSurface page(100, 100, 96, PageFloods::None);
    DrawAll(page);
    ASSERT_TRUE(SaveSvg(folder.File("a.svg"), page.Record()));
    const SvgContents svg = ReadSvg(FileBytes(folder.File("a.svg")));
    EXPECT_TRUE(svg.wellFormed);
    EXPECT_EQ(svg.elements.count("image"), 0U);
}

TEST(PageFile, SvgOfTheSamePageHasTheSameBytes) {
    const TempFolder folder;
    for (const char* name : {"a.svg", "b.svg"}) {
        PageSurface page(100, 100, 96, PageFloods::Beneath);
        DrawAll(page);
        ASSERT_TRUE(SaveSvg(folder.File(name), page.Record()));
    }
    EXPECT_EQ(FileBytes(folder.File("a.svg")), FileBytes(folder.File("b.svg")));
}

TEST(PageFile, PdfHasOnePageAndAnEnd) {
    const TempFolder folder;
    PageSurface page(800, 400, 96, PageFloods::Beneath);
    DrawAll(page);
    ASSERT_TRUE(SavePdf(folder.File("a.pdf"), page.Record()));
    const Bytes bytes = FileBytes(folder.File("a.pdf"));
    const std::string pdf(bytes.begin(), bytes.end());
    EXPECT_TRUE(pdf.starts_with("%PDF-1."));
    EXPECT_NE(pdf.find("%%EOF"), std::string::npos);
    EXPECT_NE(pdf.find("/Count 1"), std::string::npos);
    EXPECT_NE(pdf.find("/MediaBox [0 0 600.000000 300.000000]"), std::string::npos)
        << "800 by 400 pixels, 96 to the inch, in points";
    EXPECT_NE(pdf.find("/FontFile2"), std::string::npos) << "the font is embedded";
}

TEST(PageFile, PenOfAnUnknownStyleIsSolid) {
    EXPECT_EQ(DashLengths({1, LineDash::Dot, 0}), (std::vector<double>{3, 3}));
    EXPECT_EQ(DashLengths({3, LineDash::DashDot, 0}), (std::vector<double>{12, 6, 3, 6}));
    for (const int width : {1, 3}) {
        EXPECT_TRUE(DashLengths({width, LineDash::Solid, 0}).empty());
        EXPECT_TRUE(DashLengths({width, static_cast<LineDash>(7), 0}).empty());
    }
}

// Rows that don't make up the picture stand for any that can't be encoded.
TEST(PageFile, SvgWhosePictureCantBeWrittenIsNone) {
    const TempFolder folder;
    folder.Write("a.svg", {1, 2, 3});
    PageSurface page(100, 100, 96, PageFloods::Beneath);
    DrawAll(page);
    PageRecord record = page.Record();
    record.beneath.width = 0;
    EXPECT_FALSE(SaveSvg(folder.File("a.svg"), record));
    EXPECT_EQ(FileBytes(folder.File("a.svg")), (Bytes{1, 2, 3}));
    record.beneath = {};
    EXPECT_TRUE(SaveSvg(folder.File("a.svg"), record)) << "a page without floods has none";
}

TEST(PageFile, OldFileStaysWhereThePageCantBeWritten) {
    const TempFolder folder;
    PageSurface page(100, 100, 96, PageFloods::Beneath);
    DrawAll(page);
    PageSurface empty(0, 0, 96, PageFloods::Beneath);
    using Save = bool (*)(std::string_view, const PageRecord&);
    for (const Save save : {Save{SavePdf}, Save{SaveSvg}}) {
        const std::string old = folder.Write("old", std::string_view("old"));
        EXPECT_FALSE(save(old, empty.Record()));
        EXPECT_EQ(FileBytes(old).size(), 3U);
        EXPECT_FALSE(save(folder.File("none/a"), page.Record()));
        EXPECT_FALSE(save(folder.Path(), page.Record()));
        EXPECT_TRUE(save(old, page.Record()));
        EXPECT_GT(FileBytes(old).size(), 1000U);
        std::size_t files = 0;
        for ([[maybe_unused]] const auto& entry :
             std::filesystem::directory_iterator(folder.Path())) {
            ++files;
        }
        EXPECT_EQ(files, 1U) << "nothing is left beside it";
    }
}

TEST(PageFile, OldFileStaysWhereTheDiskIsFull) {
    const TempFolder folder;
    PageSurface page(100, 100, 96, PageFloods::Beneath);
    DrawAll(page);
    const std::string old = folder.Write("old", std::string_view("old"));
    Image image;
    page.CopyImage(image);
    const FileSizeLimit limit(100);
    EXPECT_FALSE(SavePng(old, image));
    EXPECT_FALSE(SaveImage(old, image));
    EXPECT_FALSE(SaveSvg(old, page.Record()));
    EXPECT_FALSE(SavePdf(old, page.Record()));
    EXPECT_EQ(FileBytes(old).size(), 3U);
}

TEST(PageFile, PipeIsNeverReplaced) {
    const TempFolder folder;
    const std::string pipe = folder.File("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    PageSurface page(100, 100, 96, PageFloods::Beneath);
    Image image;
    page.CopyImage(image);
    EXPECT_FALSE(SaveSvg(pipe, page.Record()));
    EXPECT_FALSE(SavePdf(pipe, page.Record()));
    EXPECT_FALSE(SavePng(pipe, image));
    EXPECT_FALSE(SaveImage(pipe, image));
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

// --- The map on a page ------------------------------------------------------------------------

class MapPage : public ::testing::Test {
  protected:
    void SetUp() override {
        ResetAll();
        session.ProgramDir = folder_.Path();
        session.UserDataPath = folder_.Path();
        std::filesystem::copy_file(DataFile("level1.pnt"), folder_.File("level1.pnt"));
        std::filesystem::copy_file(DataFile("world.ovm"), folder_.File("world.ovm"));
        ASSERT_EQ(GenerateLevels(LevelPath(1), kFirstUseText), kFalse);
        ASSERT_EQ(LoadLineIndex(), kFalse);
        NewMap(kFalse);
        CurrentMap().gridOn = kTrue;
    }
    void TearDown() override { ResetAll(); }

    TempFolder folder_;
};

TEST_F(MapPage, FloodsLieBeneathAsInTheWindowAndNoLineWithThem) {
    for (const std::int16_t projectionNumber : {0, 1, 2, 3}) {
        NewMap(kFalse);
        CurrentMap().projection = projectionNumber;
        if (projectionNumber == projection::kMercator) {
            CurrentMap().south = -65;
            CurrentMap().north = 75;
        } else if (projectionNumber > 1) {
            CurrentMap().south = CurrentMap().north = 20;
            CurrentMap().west = -90;
            CurrentMap().east = 90;
        }
        PageSurface page(kWidth, kHeight, 96, PageFloods::Beneath);
        PlotMap4(kFalse, page, kTrue);
        ImageSurface window(kWidth, kHeight);
        PlotMap4(kFalse, window, kTrue);

        Image shown;
        window.CopyImage(shown);
        const Image& beneath = page.Record().beneath;
        const std::set<std::uint32_t> fills = {PixelOf(LandColour()), PixelOf(SeaColour()),
                                               PixelOf(0xC0C0C0)};
        long floods = 0;
        long different = 0;
        long lines = 0;
        for (std::size_t i = 0; i < shown.pixels.size(); ++i) {
            if (fills.count(beneath.pixels[i]) == 0) ++lines;
            if (fills.count(shown.pixels[i]) == 0) continue;
            ++floods;
            if (shown.pixels[i] != beneath.pixels[i]) ++different;
        }
        EXPECT_GT(floods, kWidth * kHeight / 2) << projectionNumber;
        EXPECT_EQ(different, 0) << projectionNumber;
        EXPECT_EQ(lines, 0) << projectionNumber;
    }
}

TEST_F(MapPage, EveryLineOfTheMapIsAVector) {
    PageSurface page(kWidth, kHeight, 96, PageFloods::Beneath);
    PlotMap4(kFalse, page, kTrue);
    const PageRecord& record = page.Record();
    std::size_t lines = 0;
    std::size_t points = 0;
    for (const PageItem& item : record.items) {
        if (item.kind != PageItem::Kind::Line) continue;
        ++lines;
        points += item.points.size();
    }
    EXPECT_GT(lines, 300U);
    EXPECT_GT(points, 5000U);
}

TEST_F(MapPage, PrintedPageHasThickVectorsInBlackAndNoPicture) {
    PageSurface page(3508, 2480, 300, PageFloods::None);
    PlotMap4(kTrue, page, kTrue);
    const PageRecord& record = page.Record();
    EXPECT_TRUE(record.beneath.pixels.empty());
    std::size_t vectors = 0;
    std::size_t texts = 0;
    for (const PageItem& item : record.items) {
        EXPECT_EQ(item.pen.colour, 0);
        if (item.kind == PageItem::Kind::Line && item.pen.width == 2) ++vectors;
        if (item.kind == PageItem::Kind::Text) ++texts;
    }
    EXPECT_GT(vectors, 300U);
    EXPECT_EQ(texts, 2U) << "the map's title and the program's name";
}

}  // namespace
}  // namespace orvantis
