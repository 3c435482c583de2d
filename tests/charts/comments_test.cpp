#include "charts/comments.h"

#include <gtest/gtest.h>

#include "charts/KVCharts.h"
#include "charts/chart_lists.h"
#include "support/failing_disk.h"
#include "support/reset_all.h"
#include "support/temp_folder.h"

namespace orvantis {
namespace {

constexpr std::int16_t kType2 = chart_file::kFormat2;

class Comments : public testing::Test {
  protected:
    void SetUp() override { ResetAll(); }

    // A comment file of these blocks; the first is the head.
    void Store(const std::vector<std::pair<std::int32_t, std::string>>& blocks) {
        Bytes bytes;
        for (const auto& [next, text] : blocks) {
            bytes.resize(bytes.size() + 32);
            PutI32(&bytes[bytes.size() - 32], next);
            PutText(&bytes[bytes.size() - 28], 28, text);
        }
        folder_.Write("charts", bytes);
    }

    // `next` of a block of the file.
    std::int32_t Next(std::size_t block) const {
        const Bytes bytes = FileBytes(folder_.File("charts"));
        return block * 32 <= bytes.size() ? GetI32(&bytes[(block - 1) * 32]) : -99;
    }
    std::string Text(std::size_t block) const {
        const Bytes bytes = FileBytes(folder_.File("charts"));
        return block * 32 <= bytes.size() ? GetText(&bytes[(block - 1) * 32 + 4], 28) : "none";
    }
    std::size_t Blocks() const { return FileBytes(folder_.File("charts")).size() / 32; }

    std::int32_t Write(std::string_view text, std::int32_t ref = 0) {
        EXPECT_TRUE(WriteComment(kType2, path_, ref, text));
        return ref;
    }
    // What is there isn't taken for a comment file, and stays as it is.
    void ExpectRefused(std::int32_t ref, std::string_view text) {
        const Bytes before = FileBytes(folder_.File("charts"));
        const std::int32_t kept = ref;
        EXPECT_FALSE(WriteComment(kType2, path_, ref, text));
        EXPECT_EQ(ref, kept);
        RunTimeError reason;
        EXPECT_TRUE(TakeRunTimeError(reason));
        EXPECT_EQ(reason.number, error::kPathAccess);
        EXPECT_EQ(FileBytes(folder_.File("charts")), before);
    }
    std::string Read(std::int32_t ref) { return ReadComment(kType2, path_, ref); }

    TempFolder folder_;
    std::string path_ = folder_.File("charts.cht");
};

TEST_F(Comments, TheCommentFileIsTheChartFilesNameWithoutItsExtension) {
    EXPECT_EQ(CommentPath("C:\\data\\my.charts.cht"), "C:\\data\\my.charts");
    EXPECT_EQ(CommentPath("a.b/charts.CHT"), "a.b/charts");
    // None: type 3 files, and names that have nothing to cut or nothing left.
    EXPECT_EQ(CommentPath("a.ch6"), "a.ch6");
    EXPECT_EQ(CommentPath("a.KVCHX"), "a.KVCHX");
    EXPECT_EQ(CommentPath("a.b/charts"), "a.b/charts");
    EXPECT_EQ(CommentPath("folder/.cht"), "folder/.cht");
    EXPECT_EQ(CommentPath(""), "");
}

TEST_F(Comments, TheCommentFileOfABackupIsTheBackupOfTheCommentFile) {
    EXPECT_EQ(CommentPath("a.b/charts.cht.bak"), "a.b/charts.bak");
    EXPECT_EQ(CommentPath("charts.CHT.BAK"), "charts.BAK");
    EXPECT_EQ(CommentPath("charts.cht.bak.bak"), "charts.bak.bak");
    // No backup of a file that has a comment file of its own.
    EXPECT_EQ(CommentPath("a.b/charts.bak"), "a.b/charts");
    EXPECT_EQ(CommentPath("charts.ch6.bak"), "charts.ch6.bak");
    EXPECT_EQ(CommentPath("folder/.cht.bak"), "folder/.cht.bak");
}

TEST_F(Comments, TheCommentFileOfWhatASaveLeftAsideIsWhatItLeftAsideOfTheComments) {
    EXPECT_EQ(CommentPath("a.b/charts.cht~"), "a.b/charts~");
    EXPECT_EQ(CommentPath("charts.cht~~"), "charts~~");
    EXPECT_EQ(CommentPath("charts.cht.bak~"), "charts.bak~");
    EXPECT_EQ(CommentPath("charts.cht~.BAK"), "charts~.BAK");
    EXPECT_EQ(CommentPath("charts.bak~"), "charts~");
    // Nothing with a comment file was written there.
    EXPECT_EQ(CommentPath("a.b/charts~"), "a.b/charts~");
    EXPECT_EQ(CommentPath("charts.ch6~"), "charts.ch6~");
    EXPECT_EQ(CommentPath("folder/.cht~"), "folder/.cht~");
    EXPECT_EQ(CommentPath("~"), "~");
}

TEST_F(Comments, ANameOfAnyLengthHasACommentFile) {
    const std::string left(200000, '~');
    EXPECT_EQ(CommentPath("charts.cht" + left), "charts" + left);
}

TEST_F(Comments, ACommentOfExactly28CharactersTakesOneBlockAndOneOf29Two) {
    EXPECT_EQ(Write(std::string(28, 'a')), 2);
    EXPECT_EQ(Blocks(), 2U);
    EXPECT_EQ(Write(std::string(29, 'b')), 3);
    EXPECT_EQ(Blocks(), 4U);
    EXPECT_EQ(Next(3), 4);
    EXPECT_EQ(Next(4), 0);
    EXPECT_EQ(Text(4), "b" + std::string(27, ' '));
    EXPECT_EQ(Read(2), std::string(28, 'a'));
    EXPECT_EQ(Read(3), std::string(29, 'b'));
}

TEST_F(Comments, TheFirstCommentOfAnEmptyFileMakesABlankHead) {
    for (const bool emptyFile : {false, true}) {
        if (emptyFile) folder_.Write("charts", Bytes{});
        EXPECT_EQ(Write("text"), 2);
        EXPECT_EQ(Next(1), 0);
        EXPECT_EQ(Text(1), std::string(28, ' '));
        EXPECT_EQ(Text(2), "text" + std::string(24, ' '));
    }
}

TEST_F(Comments, OnlyTheLastBlockLosesItsTrailingBlanks) {
    const std::string text = "left" + std::string(24, ' ') + "right  ";
    EXPECT_EQ(Read(Write(text)), "left" + std::string(24, ' ') + "right");
}

TEST_F(Comments, EndMarksAreCleanedAway) {
    EXPECT_EQ(CleanEndMarks(std::string_view("text\0\x1A\0", 7)), "text");
    EXPECT_EQ(CleanEndMarks("one\x01\x01two\x01three"), "one\r\ntwo\x01three");
    EXPECT_EQ(CleanEndMarks(std::string_view("\0\0", 2)), "");
    EXPECT_EQ(CleanEndMarks(std::string_view("a\0b", 3)), std::string_view("a\0b", 3));
    // The pair may lie in two blocks.
    EXPECT_EQ(Read(Write(std::string(27, 'a') + "\x01\x01z\x1A")), std::string(27, 'a') + "\r\nz");
}

TEST_F(Comments, AnEmptyTextGivesTheBlocksBackAndTheNextCommentTakesThemFirst) {
    const std::int32_t first = Write(std::string(60, 'a'));
    const std::int32_t second = Write("b");
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 5);
    EXPECT_EQ(Write("", first), 0);
    EXPECT_EQ(Next(1), 2);
    for (const std::size_t block : {2, 3, 4}) EXPECT_EQ(Text(block), std::string(28, ' '));
    EXPECT_EQ(Next(4), 0);
    EXPECT_EQ(Write("", second), 0);
    EXPECT_EQ(Next(1), 5);
    EXPECT_EQ(Next(5), 2);

    // Two of the four free blocks are taken, then all and one more.
    EXPECT_EQ(Write(std::string(29, 'c')), 5);
    EXPECT_EQ(Next(5), 2);
    EXPECT_EQ(Next(2), 0);
    EXPECT_EQ(Next(1), 3);
    EXPECT_EQ(Write(std::string(28 * 3, 'd')), 3);
    EXPECT_EQ(Next(4), 6);
    EXPECT_EQ(Next(1), 0);
    EXPECT_EQ(Blocks(), 6U);
    EXPECT_EQ(Read(3), std::string(28 * 3, 'd'));
    EXPECT_EQ(Read(5), std::string(29, 'c'));
}

TEST_F(Comments, AnEmptyTextWhereThereIsNoCommentTouchesNothing) {
    const auto write = [this](std::int32_t ref) {
        EXPECT_TRUE(WriteComment(kType2, path_, ref, ""));
        EXPECT_EQ(ref, 0);
        EXPECT_EQ(PendingRunTimeError(), 0);
    };
    for (const std::int32_t none : {0, 1, -1}) {
        folder_.Write("charts", "Notes of mine, and no comments.");
        const Bytes others = FileBytes(folder_.File("charts"));
        write(none);
        EXPECT_EQ(FileBytes(folder_.File("charts")), others) << none;
        Store({{0, ""}, {0, "taken"}});
        const FullDisk disk(0);
        write(none);
        EXPECT_EQ(Text(2), "taken" + std::string(23, ' '));
    }
}

TEST_F(Comments, TheHeadIsNoComment) {
    EXPECT_FALSE(LeadsToComment(-1));
    EXPECT_FALSE(LeadsToComment(0));
    EXPECT_FALSE(LeadsToComment(1));
    EXPECT_TRUE(LeadsToComment(2));
    ChartList list;
    list.charts.resize(2);
    ASSERT_TRUE(SaveChartFile(path_, kType2, list));
    Bytes bytes = FileBytes(path_);
    PutI32(&bytes[292 + 158], 1);
    folder_.Write("charts.cht", bytes);
    Store({{0, "head"}, {0, "taken"}});
    EXPECT_EQ(HighestCommentRef(path_), 0);
    EXPECT_EQ(Read(1), "");
    ASSERT_TRUE(LoadChartList(path_, list, kFalse));
    EXPECT_EQ(list.charts[0].comment, "");
    PutI32(&bytes[584 + 158], 2);
    folder_.Write("charts.cht", bytes);
    EXPECT_EQ(HighestCommentRef(path_), 2);
}

TEST_F(Comments, ATextLeavesTheChainAtItsReferenceAlone) {
    const std::int32_t other = Write("another chart's");
    EXPECT_EQ(Write("mine", other), 3);
    EXPECT_EQ(Read(other), "another chart's");
}

TEST_F(Comments, NoReferenceAndNoFileGiveNoText) {
    EXPECT_EQ(Read(2), "");
    EXPECT_EQ(Write("", 7), 0);
    EXPECT_FALSE(std::filesystem::exists(folder_.File("charts")));
    Write("text");
    for (const std::int32_t ref : {0, 1, 3, -1, INT32_MAX, INT32_MIN}) EXPECT_EQ(Read(ref), "");
    EXPECT_TRUE(TestShell().boxes.empty());
    EXPECT_EQ(PendingRunTimeError(), 0);
}

TEST_F(Comments, ABlockThatPointsToItselfEndsTheChainAtOnce) {
    Store({{0, ""}, {3, "first"}, {3, "second"}});
    EXPECT_EQ(Read(2), "first" + std::string(23, ' ') + "second" + std::string(22, ' '));
}

TEST_F(Comments, AChainThatLoopsAmongSeveralBlocksIsCutAfter1150Blocks) {
    Store({{0, ""}, {3, "1"}, {4, "2"}, {2, "3"}});
    const std::string text = Read(2);
    EXPECT_EQ(text.size(), 1150U * 28);
    EXPECT_EQ(text.size(), kMostComment);
    EXPECT_EQ(text[28 * 1148], '3');
    EXPECT_EQ(text[28 * 1149], '1');  // 1149 blocks are 383 whole rounds
}

TEST_F(Comments, AChainThatLeadsOutOfTheFileOrToItsHeadEndsThere) {
    for (const std::int32_t next : {1, 4, -1, INT32_MAX, INT32_MIN}) {
        Store({{0, ""}, {3, "first"}, {next, "second"}});
        EXPECT_EQ(Read(2).substr(28, 6), "second") << next;
        EXPECT_EQ(Read(2).size(), 56U);
    }
}

TEST_F(Comments, APieceOfABlockAtTheEndIsNone) {
    Store({{0, ""}, {3, "first"}, {0, "second"}});
    std::filesystem::resize_file(folder_.File("charts"), 95);
    EXPECT_EQ(Read(2), "first" + std::string(23, ' '));
    ExpectRefused(0, "new");
    Bytes blocks = FileBytes(folder_.File("charts"));
    EXPECT_EQ(PutComment(blocks, "new"), 3);
    EXPECT_EQ(blocks.size(), 96U);
}

TEST_F(Comments, FreeingAChainThatLoopsEndsAndLeavesASoundFreeList) {
    Store({{5, ""}, {3, "1"}, {4, "2"}, {2, "3"}, {0, ""}});
    EXPECT_EQ(Write("", 2), 0);
    EXPECT_EQ(Next(1), 2);
    for (const std::size_t block : {2, 3, 4}) EXPECT_EQ(Text(block), std::string(28, ' '));
    // Whatever is taken from it now, no block is taken twice.
    std::string text;
    for (int i = 0; i < 28 * 9; ++i) text += static_cast<char>('a' + i / 28);
    EXPECT_EQ(Read(Write(text)), text);
}

TEST_F(Comments, FreeingABlockThatPointsToItselfLinksItToTheFreeList) {
    Store({{3, ""}, {2, "1"}, {0, ""}});
    EXPECT_EQ(Write("", 2), 0);
    EXPECT_EQ(Next(1), 2);
    EXPECT_EQ(Next(2), 3);
}

TEST_F(Comments, AChainThatIsFreeAlreadyStaysSo) {
    Store({{2, ""}, {3, ""}, {0, ""}});
    EXPECT_EQ(Write("", 2), 0);
    EXPECT_EQ(Next(1), 2);
    EXPECT_EQ(Next(2), 3);
    EXPECT_EQ(Write("", 3), 0);  // the tail of the free list: it makes a ring
    const std::string text(28 * 5, 'x');
    const std::int32_t ref = Write(text);
    EXPECT_EQ(Read(ref), text);
    EXPECT_EQ(Blocks(), 6U);
}

// The text of a comment whose blocks can be told apart.
std::string Numbered(char first, int blocks) {
    std::string text;
    for (int i = 0; i < blocks; ++i) text += std::string(28, static_cast<char>(first + i));
    return text;
}

TEST_F(Comments, ARingInTheFreeListGivesNoBlockToASecondComment) {
    // The free list goes 3, 4, 5 and back to 3.
    Store({{3, ""}, {0, "kept"}, {4, ""}, {5, ""}, {3, ""}});
    const std::string one = Numbered('a', 1);
    const std::string two = Numbered('b', 4);
    const std::int32_t first = Write(one);
    EXPECT_EQ(first, 3);
    EXPECT_EQ(Next(1), 0) << "what remains leads to the block that was taken";
    const std::int32_t second = Write(two);
    EXPECT_EQ(Read(first), one);
    EXPECT_EQ(Read(second), two);
    EXPECT_EQ(Read(2), "kept");
    // A ring that leaves the taken block out is none either.
    Store({{3, ""}, {0, "kept"}, {4, ""}, {5, ""}, {4, ""}});
    EXPECT_EQ(Write(one), 3);
    EXPECT_EQ(Next(1), 0);
}

TEST_F(Comments, AFreeListThatLeadsOutOfBlocksInMemoryTakesNoBlockWhenTheyHaveGrown) {
    Store({{2, ""}, {3, ""}, {6, ""}});  // block 6 isn't there yet
    Bytes blocks = FileBytes(folder_.File("charts"));
    EXPECT_EQ(PutComment(blocks, "a"), 2);
    EXPECT_EQ(GetI32(blocks.data()), 0);
    const std::string text = Numbered('b', 4);
    const std::int32_t ref = PutComment(blocks, text);
    PutComment(blocks, Numbered('p', 3));
    EXPECT_EQ(GetComment(blocks, ref), text);
}

TEST_F(Comments, WhatHasNotTheFormOfACommentFileIsNeverWrittenOver) {
    folder_.Write("charts", "Notes of mine that are no comments, in a text of some lines");
    ExpectRefused(0, "text");
    ExpectRefused(2, "");
    for (const std::int32_t out : {-5, 1, 99, INT32_MIN}) {
        Store({{out, ""}, {0, "kept"}});
        ExpectRefused(0, "text");
        Store({{0, ""}, {out, "kept"}});
        ExpectRefused(2, "");
    }
}

TEST_F(Comments, AChainThatIsFreedTwiceWithAnotherInBetweenStaysFreeOnce) {
    const std::int32_t shared = Write(Numbered('a', 2));
    const std::int32_t other = Write(Numbered('c', 1));
    EXPECT_EQ(Write("", shared), 0);
    EXPECT_EQ(Write("", other), 0);
    const Bytes before = FileBytes(folder_.File("charts"));
    EXPECT_EQ(Write("", shared), 0);
    EXPECT_EQ(FileBytes(folder_.File("charts")), before);
    const std::string text = Numbered('d', 3);
    EXPECT_EQ(Read(Write(text)), text);
    EXPECT_EQ(Blocks(), 4U);
}

TEST_F(Comments, ATailThatTwoChainsShareIsFreedOnce) {
    Store({{0, ""}, {4, "first"}, {4, "second"}, {0, "tail"}});
    EXPECT_EQ(Write("", 2), 0);
    EXPECT_EQ(Write("", 3), 0);
    EXPECT_EQ(Next(1), 3);
    EXPECT_EQ(Next(3), 2);
    EXPECT_EQ(Next(2), 4);
    EXPECT_EQ(Next(4), 0);
}

TEST_F(Comments, ACommentFileCutAtAnyByteGivesTheBlocksBeforeTheCut) {
    const std::string one = Numbered('a', 3);
    const std::string two = Numbered('k', 2);
    Write(one);
    Write(two);
    const Bytes whole = FileBytes(folder_.File("charts"));
    ASSERT_EQ(whole.size(), 192U);
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        folder_.Write("charts", Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(size)));
        const std::size_t blocks = size / 32;
        const auto part = [blocks](const std::string& text, std::size_t before) {
            return text.substr(0, 28 * (blocks > before ? blocks - before : 0));
        };
        ASSERT_EQ(Read(2), part(one, 1)) << size;
        ASSERT_EQ(Read(5), part(two, 4)) << size;
        // What is cut within a chain, or a block, is left for a rescue.
        if (size != 0 && size != 32 && size != 128 && size != 192) {
            ExpectRefused(0, "text");
            ExpectRefused(5, "");
            continue;
        }
        ASSERT_EQ(Write("", 5), 0);
        const std::string text = Numbered('t', 6);
        ASSERT_EQ(Read(Write(text)), text) << size;
        ASSERT_EQ(Read(2), size < 128 ? text : part(one, 1)) << size;
    }
}

TEST_F(Comments, AFreeListInARingIsGivenUp) {
    Store({{3, ""}, {0, "kept"}, {3, ""}});
    const std::int32_t ref = Write(std::string(56, 'y'));
    EXPECT_EQ(Read(ref), std::string(56, 'y'));
    EXPECT_EQ(Read(2), "kept");
}

TEST_F(Comments, ReferencesOutOfRangeFreeNothing) {
    Store({{0, ""}, {0, "kept"}});
    const Bytes before = FileBytes(folder_.File("charts"));
    for (const std::int32_t ref : {0, 1, 3, -1, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(Write("", ref), 0);
        EXPECT_EQ(FileBytes(folder_.File("charts")), before) << ref;
    }
}

TEST_F(Comments, TheLongestCommentComesBackAndALongerOneIsRefused) {
    const std::string text(kMostComment, 'x');
    std::int32_t ref = Write(text);
    EXPECT_EQ(Read(ref), text);
    const Bytes before = FileBytes(folder_.File("charts"));
    EXPECT_FALSE(WriteComment(kType2, path_, ref, text + "x"));
    EXPECT_EQ(ref, 2);
    EXPECT_EQ(PendingRunTimeError(), error::kFileTooLarge);
    EXPECT_EQ(FileBytes(folder_.File("charts")), before);
}

TEST_F(Comments, ACommentFileThatMayNotBeOpenedIsAnErrorAndNotNone) {
    const auto read = [this] {
        ChartList list;
        list.charts.resize(1);
        list.charts[0].comment = "text";
        if (!SaveChartFile(path_, kType2, list)) std::_Exit(1);
        ActAsPlainUserOn(folder_.File("charts"), std::filesystem::perms::none);
        ChartList again;
        if (LoadChartList(path_, again, kFalse)) std::_Exit(2);
        RunTimeError reason;
        if (!TakeRunTimeError(reason) || reason.number != error::kPermission) std::_Exit(3);
        if (!Read(2).empty() || !TakeRunTimeError(reason)) std::_Exit(4);
        std::_Exit(reason.number == error::kPathAccess ? 0 : 5);
    };
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms::all);
    EXPECT_EXIT(read(), testing::ExitedWithCode(0), "");
}

TEST_F(Comments, TypesWithoutCommentsAndFilesWithoutACommentFileRefuseThem) {
    std::int32_t ref = 4;
    for (const std::int16_t type : {chart_file::kBlocks, chart_file::kFormat0}) {
        EXPECT_FALSE(WriteComment(type, path_, ref, "text"));
        EXPECT_EQ(ReadComment(type, path_, 2), "");
    }
    const std::string bare = folder_.Write("bare", Bytes(200, 'x'));
    EXPECT_FALSE(WriteComment(kType2, bare, ref, "text"));
    EXPECT_EQ(ReadComment(kType2, bare, 2), "");
    EXPECT_EQ(ref, 4);
    EXPECT_EQ(FileBytes(bare), Bytes(200, 'x'));
}

TEST_F(Comments, OnAFullDiskTheCommentFileAndTheReferenceStay) {
    std::int32_t ref = Write("first");
    const Bytes before = FileBytes(folder_.File("charts"));
    bool written = true;
    {
        const FullDisk disk(before.size());
        written = WriteComment(kType2, path_, ref, "second");
    }
    EXPECT_FALSE(written);
    EXPECT_EQ(ref, 2);
    EXPECT_EQ(FileBytes(folder_.File("charts")), before);
    EXPECT_EQ(PendingRunTimeError(), error::kDiskFull);
}

TEST_F(Comments, ACommentOfAnOpenType3FileGoesIntoItsList) {
    ChartList list;
    list.path = folder_.File("open.ch6");
    list.inUse = kTrue;
    list.charts.resize(2);
    openChartLists.push_back(list);
    std::int32_t ref = 2;
    EXPECT_TRUE(WriteComment(chart_file::kFormat3, list.path, ref, "text"));
    EXPECT_EQ(ref, 2);
    EXPECT_EQ(openChartLists[0].charts[1].comment, "text");
    EXPECT_NE(openChartLists[0].changed, 0);
    EXPECT_EQ(ReadComment(chart_file::kFormat3, folder_.File("OPEN.CH6"), 2), "text");
    for (std::int32_t beyond : {0, 3, -1}) {
        EXPECT_EQ(ReadComment(chart_file::kFormat3, list.path, beyond), "");
        EXPECT_FALSE(WriteComment(chart_file::kFormat3, list.path, beyond, "text"));
    }
    EXPECT_EQ(ReadComment(chart_file::kFormat3, folder_.File("other.ch6"), 1), "");
}

}  // namespace
}  // namespace orvantis
