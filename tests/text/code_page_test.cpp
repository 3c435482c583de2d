#include "text/code_page.h"

#include <gtest/gtest.h>

namespace orvantis {
namespace {

TEST(CodePage, EveryByteSurvivesTheWayThereAndBack) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        EXPECT_EQ(FromUtf8(ToUtf8(one)), one) << byte;
        EXPECT_EQ(CodePageByte(CodePageCharacter(static_cast<std::uint8_t>(byte))), byte);
    }
}

// Expected: Unicode Consortium, MAPPINGS/VENDORS/MICSFT/WINDOWS/CP1252.TXT.
TEST(CodePage, BytesAboveAsciiHaveTheCharactersOfThePage) {
    const struct {
        const char* byte;
        const char* utf8;
    } rows[] = {
        {"\x80", "\xE2\x82\xAC"},  // euro sign
        {"\x8A", "\xC5\xA0"},      // S with caron
        {"\x8C", "\xC5\x92"},      // OE
        {"\x92", "\xE2\x80\x99"},  // right single quotation mark
        {"\x96", "\xE2\x80\x93"},  // en dash
        {"\x99", "\xE2\x84\xA2"},  // trade mark
        {"\x9F", "\xC5\xB8"},      // Y with diaeresis
        {"\xA0", "\xC2\xA0"},      // no-break space
        {"\xB0", "\xC2\xB0"},      // degree
        {"\xE9", "\xC3\xA9"},      // e acute
        {"\xFF", "\xC3\xBF"},      // y with diaeresis
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ToUtf8(row.byte), row.utf8);
        EXPECT_EQ(FromUtf8(row.utf8), row.byte);
    }
}

TEST(CodePage, WhatThePageCannotSayBecomesAQuestionMark) {
    EXPECT_EQ(FromUtf8("\xC4\x81"), "?");            // a with macron
    EXPECT_EQ(FromUtf8("x\xE6\x9D\xB1y"), "x?y");    // a Chinese character
    EXPECT_EQ(FromUtf8("\xF0\x9F\x8C\x8D!"), "?!");  // beyond 16 bits
    EXPECT_EQ(FromUtf8("\xC2\x80"), "?");            // a control character of its own
}

TEST(CodePage, EveryByteOutsideAWellFormedCharacterBecomesAQuestionMark) {
    EXPECT_EQ(FromUtf8("a\xFF"
                       "b"),
              "a?b");                                 // never a lead byte
    EXPECT_EQ(FromUtf8("\xC3"), "?");                 // cut off
    EXPECT_EQ(FromUtf8("\xE2\x82"), "??");            // cut off
    EXPECT_EQ(FromUtf8("\xC3z"), "?z");               // continuation missing
    EXPECT_EQ(FromUtf8("\xC0\xAF"), "??");            // longer than needed
    EXPECT_EQ(FromUtf8("\xED\xA0\x80"), "???");       // half a surrogate pair
    EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80"), "????");  // above the last character
}

TEST(CodePage, EditedTextIsUtf8WhereItIsWellFormedAndBytesElse) {
    EXPECT_EQ(FromEditedText("Z\xC3\xBCrich"), "Z\xFCrich");
    EXPECT_EQ(FromEditedText("Z\xFCrich"), "Z\xFCrich");
    EXPECT_EQ(FromEditedText("\xC3\xBC \xFC"), "\xC3\xBC \xFC");  // not well-formed as a whole
    EXPECT_EQ(FromEditedText("\xE2\x82"), "\xE2\x82");            // cut off
    EXPECT_EQ(FromEditedText(""), "");
}

TEST(CodePage, EmptyAndPlainTextStayAsTheyAre) {
    EXPECT_EQ(ToUtf8(""), "");
    EXPECT_EQ(FromUtf8(""), "");
    EXPECT_EQ(ToUtf8("Culminate, 12\r\n"), "Culminate, 12\r\n");
    EXPECT_EQ(FromUtf8("Culminate, 12\r\n"), "Culminate, 12\r\n");
    const std::string withZero("a\0b", 3);
    EXPECT_EQ(FromUtf8(ToUtf8(withZero)), withZero);
}

}  // namespace
}  // namespace orvantis
