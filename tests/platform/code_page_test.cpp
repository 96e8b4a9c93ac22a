#include "platform/base/code_page.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace kq_base;
using namespace kq_base::literals;

std::string Byte(int value) { return {static_cast<char>(value)}; }

TEST(CodePage, EveryByteSurvivesTheRoundTripUnderACharacterOfItsOwn) {
    std::set<std::string> characters;
    for (int value = 0; value < 256; ++value) {
        const std::string utf8 = ToUtf8(Byte(value));
        characters.insert(utf8);
        std::string back;
        ASSERT_TRUE(FromUtf8(utf8, back)) << value;
        EXPECT_EQ(back, Byte(value)) << value;
    }
    EXPECT_EQ(characters.size(), 256U);
}

TEST(CodePage, Characters) {
    struct TRow {
        const char *utf8;
        int byte;
    };
    for (const auto &[utf8, byte] :
         {TRow{"A", 0x41},  {"€", 0x80}, {"\u0081", 0x81}, {"‚", 0x82}, {"\u0083", 0x83}, {"„", 0x84},
          {"\u0088", 0x88}, {"Š", 0x8A}, {"Ť", 0x8D},      {"Ž", 0x8E}, {"\u0090", 0x90}, {"“", 0x93},
          {"\u0098", 0x98}, {"š", 0x9A}, {"ť", 0x9D},      {"ž", 0x9E}, {"\u00A0", 0xA0}, {"Ł", 0xA3},
          {"µ", 0xB5},      {"Á", 0xC1}, {"Č", 0xC8},      {"Ě", 0xCC}, {"Í", 0xCD},      {"Ď", 0xCF},
          {"Ň", 0xD2},      {"Ř", 0xD8}, {"Ů", 0xD9},      {"ß", 0xDF}, {"č", 0xE8},      {"ě", 0xEC},
          {"ď", 0xEF},      {"ň", 0xF2}, {"÷", 0xF7},      {"ř", 0xF8}, {"ů", 0xF9},      {"ý", 0xFD},
          {"˙", 0xFF}}) {
        EXPECT_EQ(ToUtf8(Byte(byte)), utf8);
    }
}

TEST(CodePage, LettersFoldInPairsAndNothingElseChanges) {
    constexpr std::string_view kSmall = "abcdefghijklmnopqrstuvwxyzšśťžźłąşżľŕáâăäĺćçčéęëěíîďđńňóôőöřůúűüýţ"_cp;
    constexpr std::string_view kCapital = "ABCDEFGHIJKLMNOPQRSTUVWXYZŠŚŤŽŹŁĄŞŻĽŔÁÂĂÄĹĆÇČÉĘËĚÍÎĎĐŃŇÓÔŐÖŘŮÚŰÜÝŢ"_cp;
    ASSERT_EQ(kSmall.size(), kCapital.size());
    for (int value = 0; value < 256; ++value) {
        const char byte = Byte(value)[0];
        const std::size_t small = kSmall.find(byte);
        const std::size_t capital = kCapital.find(byte);
        EXPECT_EQ(ToUpper(byte), small == std::string_view::npos ? byte : kCapital[small]) << value;
        EXPECT_EQ(ToLower(byte), capital == std::string_view::npos ? byte : kSmall[capital]) << value;
    }
    EXPECT_EQ(ToUpper("žluťoučký kůň 1"_cp), "ŽLUŤOUČKÝ KŮŇ 1"_cp);
    EXPECT_TRUE(EqualIgnoringCase("Řež"_cp, "řEŽ"_cp));
    EXPECT_FALSE(EqualIgnoringCase("rez"_cp, "řez"_cp));
    EXPECT_FALSE(EqualIgnoringCase("rez"_cp, "reza"_cp));
}

TEST(CodePage, RefusesWhatIsNoUtf8OrHasNoByte) {
    for (const char *utf8 : {"\x80", "\xC3", "\xC3(", "\xE2\x82", "\xC0\x80", "\xC1\xBF", "\xE0\x81\x81",
                             "\xED\xA0\x80", "\xF0\x9F\x98\x80", "\xF8", "\xFF", "ñ", "日", "a\xE8"}) {
        std::string bytes;
        EXPECT_FALSE(FromUtf8(utf8, bytes)) << utf8;
    }
}

}  // namespace
