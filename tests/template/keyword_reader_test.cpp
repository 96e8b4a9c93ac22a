#include "template/keyword_reader.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/base/code_page.h"

namespace {

using namespace kq_pdt;

TEST(Keywords, EveryCodeHasItsWordAndEveryWordItsCode) {
    std::set<std::string_view> words;
    for (std::uint32_t code = kFirstKeyword; code < kFirstKeyword + kKeywordCount; ++code) {
        const std::string word(KeywordText(code));
        words.insert(KeywordText(code));
        EXPECT_EQ(FindKeyword(word), code);
        for (std::size_t at = 0; at < word.size(); ++at) {
            std::string other = word;
            other[at] = other[at] == '_' ? '-' : kq_base::ToUpper(other[at]);
            EXPECT_EQ(FindKeyword(other), 0U) << other;
        }
        EXPECT_EQ(FindKeyword(word + "x"), 0U);
        EXPECT_EQ(FindKeyword(word + std::string(1, '\0')), 0U);
    }
    EXPECT_EQ(words.size(), kKeywordCount);
    for (const std::uint32_t code : {0U, 1U, 99U, 170U, kUndefinedCode}) {
        EXPECT_EQ(KeywordText(code), "") << code;
        EXPECT_FALSE(IsChannelType(code) || IsDirection(code)) << code;
    }
    for (const std::string_view word : {"", "x", "new_channel", "defsection", "a_word_of_nineteen_x", "\xE1\xE8"}) {
        EXPECT_EQ(FindKeyword(word), 0U) << word;
    }
}

/// The numbers are stored in models and known to other modules.
TEST(Keywords, NumbersStand) {
    const std::pair<const char *, std::uint32_t> rows[] = {
        {"def_section", 100}, {"string", 108},  {"number", 109},           {"def_par", 110},       {"procedure", 120},
        {"channels", 128},    {"ch_from", 130}, {"boolean", 133},          {"shortreal", 140},     {"real", 141},
        {"input", 144},       {"output", 145},  {"ver_from", 150},         {"bidirectional", 146}, {"or", 160},
        {"all", 159},         {"true", 166},    {"no_case_sensitive", 169}};
    for (const auto &[word, code] : rows) {
        EXPECT_EQ(FindKeyword(word), code) << word;
    }
    EXPECT_TRUE(IsChannelType(kwBoolean) && IsChannelType(kwReal) && IsChannelType(kwString));
    EXPECT_FALSE(IsChannelType(kwNumber) || IsChannelType(kwBoolean - 1) || IsChannelType(kwBegin));
    EXPECT_TRUE(IsDirection(kwInput) && IsDirection(kwBidirectional));
    EXPECT_FALSE(IsDirection(kwEnd) || IsDirection(kwChDirection));
}

TEST(KeywordReader, LaysKeywordsOverIdentifiers) {
    CKeywordReader reader;
    reader.InitDString(std::string_view("def_section Def_section 'name' 5 = (* label *) label 'open\n name"));
    const std::pair<std::uint32_t, const char *> tokens[] = {
        {kwDefSection, "def_section"},  {par_scanner::kIdentifier, "Def_section"},
        {par_scanner::kString, "name"}, {par_scanner::kNumber, "5"},
        {par_scanner::kEqual, ""},      {kwLabel, "label"},
        {par_scanner::kEndOfInput, ""}};
    for (const auto &[kind, text] : tokens) {
        reader.NextToken();
        EXPECT_EQ(reader.Kind(), kind);
        EXPECT_EQ(reader.TokenText(), text);
    }
}

TEST(KeywordReader, TheFirstFailureStays) {
    CKeywordReader reader;
    reader.InitDString(std::string_view("name = 5"));
    reader.NextToken();
    EXPECT_TRUE(reader.Expect(kwName));
    EXPECT_FALSE(reader.Expect(kwName));
    EXPECT_EQ(kq_base::ToUtf8(reader.Message().View()), "Očekáván  name");
    reader.Fail("other");
    reader.Fail("other", {kwName});
    reader.NextToken();
    EXPECT_FALSE(reader.Expect(par_scanner::kEqual));
    EXPECT_EQ(reader.Kind(), par_scanner::kEqual);
    EXPECT_EQ(kq_base::ToUtf8(reader.Message().View()), "Očekáván  name");
    reader.FailInstead("One of", {kwName, par_scanner::kNotEqual, par_scanner::kIdentifier, par_scanner::kString,
                                  par_scanner::kNumber, par_scanner::kBlank, par_scanner::kEndOfInput, 170});
    EXPECT_EQ(kq_base::ToUtf8(reader.Message().View()), "One of name <> identifikátor řetězec číslo   ");
}

}  // namespace
