#include "template/language/keywords.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/pieces.h"

namespace {

using kq_pdt::FindKeyword;
using kq_pdt::KeywordText;

/// In the order of their codes, which other modules know.
const std::string kWords =
    "def_section end_section name required def_key end_key multiple depend_on string number def_par label default "
    "range_from range_to id comment end_par bubble par procedure dll load_pdt optional nedef enable_if option "
    "options channels ch_type ch_from ch_to ch_number boolean shortcard cardinal longcard shortint integer longint "
    "shortreal real begin end input output bidirectional ch_direction no_channels ch_count ver_from read_all "
    "keywords write_if_all var channels_group init_value create_new_channel mod all or and not channel_range type "
    "direction true false floating no_case_sensitive";

TEST(Keywords, EachWordHasItsCodeAndNothingElseHas) {
    std::uint32_t code = 100;
    for (const std::string &word : Pieces(kWords, " ")) {
        EXPECT_EQ(FindKeyword(word), code) << word;
        EXPECT_EQ(KeywordText(code), word);
        EXPECT_EQ(FindKeyword(word + "x"), 0U) << word;
        for (std::size_t at = 0; at < word.size(); ++at) {
            for (const char other : {'_', 'x', 'E', '\0', '\xE8'}) {
                std::string changed = word;
                changed[at] = other;
                EXPECT_EQ(FindKeyword(changed), changed == word ? code : 0U) << changed;
            }
            EXPECT_NE(FindKeyword(std::string_view(word).substr(at + 1)), code) << word;
        }
        ++code;
    }
    EXPECT_EQ(code, 170U);
    EXPECT_EQ(KeywordText(99), "");
    EXPECT_EQ(KeywordText(170), "");
    EXPECT_EQ(KeywordText(0xFFFFFFFF), "");
    EXPECT_EQ(FindKeyword(""), 0U);
    EXPECT_EQ(FindKeyword(std::string(2000, 'e')), 0U);
}

TEST(Keywords, TypesAndDirections) {
    for (std::uint32_t code = 0; code < 200; ++code) {
        EXPECT_EQ(kq_pdt::IsChannelType(code), code == 108 || (code >= 133 && code <= 141)) << code;
        EXPECT_EQ(kq_pdt::IsDirection(code), code >= 144 && code <= 146) << code;
    }
}

}  // namespace
