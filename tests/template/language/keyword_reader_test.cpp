#include "template/language/keyword_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/base/code_page.h"

namespace {

using namespace kq_pdt;

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
