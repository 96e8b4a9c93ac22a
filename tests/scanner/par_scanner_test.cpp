#include "scanner/par_scanner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <set>

#include "platform/view/text_view.h"
#include "scanner/file_par_scanner.h"
#include "scanner/view_par_scanner.h"
#include "tests/scanner/surface_text.h"
#include "tests/support/temporary_directory.h"

namespace {

using namespace par_scanner;

struct TCase {
    std::string_view text;
    std::string_view surface;
};

void CheckSurfaces(std::initializer_list<TCase> cases) {
    for (const TCase &each : cases) {
        CTextParScanner scanner(each.text);
        EXPECT_EQ(SurfaceText(scanner, false), each.surface) << each.text;
    }
}

TEST(ParScanner, Headers) {
    CheckSurfaces({
        {"", ""},
        {"x\n  [a b ] rest [b]\n[]\n", "[a b]2\n[]3\n"},
        {"\t[a]\n[b\n]\n[c]\n", "[c]4\n"},
        {"[ (* c *) a]\n[b (* c *) ]\n[(* c *)c]\n", "[a]1\n[b]2\n[(* c *)c]3\n"},
        {"[a=b]\n['a]b']\n[a\rb]\n", "[a=b]1\n['a]b']2\n[a]3\n"},
        {"[(*\n*)a]\n", "[(*\n*)a]2\n"},
        // A header after a comment is a key, too.
        {"[a]\nk=1\n(**)[b]=\nm=2\n[c]\n", "[a]1\nk@2=1|1\n(**)[b]@3=|\nm@4=2|2\n[b]3\nm@4=2|2\n[c]5\n"},
    });
}

TEST(ParScanner, Keys) {
    CheckSurfaces({
        {"[s]\n a b = 1\n\n  \n=2\nc\nd", "[s]1\na b@2=1|1\nc@6\n"},
        {"[s]\na:=1\nb<=2\nc>=3\nd<>=4\n", "[s]1\na:=1@2\nb<=2@3\nc>=3@4\nd<>@5=4|4\n"},
        {"[s]\n'a=b'=1\na(*=*)b=2\n", "[s]1\n'a=b'@2=1|1\na(*=*)b@3=2|2\n"},
        {"[s]\na=1\n\tb=2\n\t[x]\nc=3\n", "[s]1\na@2=1|1\n\tb@3=2|2\n\t[x]@4\nc@5=3|3\n"},
        {"[s]\n(* c *) a = 1\n(* c *)b = 1\n", "[s]1\na@2=1|1\n(* c *)b@3=1|1\n"},
    });
}

TEST(ParScanner, Values) {
    CheckSurfaces({
        {"[s]\nk= a,b c , d\n", "[s]1\nk@2=a,b c , d|a,b c,d\n"},
        {"[s]\nk=a,,b, ,c\n", "[s]1\nk@2=a,,b, ,c|a,,b,,c\n"},
        {"[s]\nk=a ,  , b\n", "[s]1\nk@2=a ,  , b|a,b\n"},
        {"[s]\nk='a, b',c\n", "[s]1\nk@2='a, b',c|'a, b',c\n"},
        {"[s]\nk=a(* , *)b (* c *)\n", "[s]1\nk@2=a(* , *)b|a(* , *)b \n"},
        {"[s]\nk=a(* \n *),b\nm=1\n", "[s]1\nk@2=a(* \n *),b|a,b\nm@4=1|1\n"},
    });
}

TEST(ParScanner, ReaderFailuresEndTheText) {
    CheckSurfaces({
        {"[s]\na=1\nb='x\nc=3\n[t]\n", "[s]1\na@2=1|1\nb@3=|\n"},
        {"[s]\na=1\nb=2,12EF\nc=3\n[t]\n", "[s]1\na@2=1|1\nb@3=2,|2,\n"},
        {"[s]\na=1(*\nb=2\n[t]\n", "[s]1\na@2=1|1\n"},
        {"[s]\na=1\n[t] 'x\nb=2\n", "[s]1\na@2=1|1\n[t]3\n"},
        {"[s]\nI12EF=1E5,.E\n", "[s]1\nI12EF@2=1E5,.E|1E5,.E\n"},
    });
    const std::string overlong = "[s]\na=1\nb='" + std::string(1024, 'x') + "'\nc=2\n";
    CTextParScanner scanner(overlong);
    EXPECT_EQ(SurfaceText(scanner, false), "[s]1\na@2=1|1\nb@3=|\n");
}

TEST(ParScanner, BoundsOfTexts) {
    for (const std::string_view more : {"", "'", "(**)"}) {  // in a plain line and in odd ones
        for (const std::size_t length : {254U, 255U, 256U, 300U}) {
            const std::string x(length, 'x');
            const std::string expected(length > 255 ? 254 : length, 'x');
            const std::string tail(more == "'" ? "''" : more);
            const std::string text = "[" + x + "]\n" + x + " = " + x + " " + tail + "\n";
            CTextParScanner scanner(text);
            std::string_view value;
            ASSERT_TRUE(scanner.FirstSection() && scanner.FirstKey() && scanner.FirstValue(value));
            EXPECT_EQ(scanner.SectionName(), expected);
            EXPECT_EQ(scanner.KeyName(), expected);
            EXPECT_EQ(value, expected);
            ASSERT_TRUE(scanner.KeyPars(value));
            EXPECT_EQ(value, more == "'" ? (x + " ''").substr(0, length > 252 ? 254 : length + 3) : expected);
        }
    }
    using namespace std::string_view_literals;
    CheckSurfaces({{"[s\0t]\nk\0l=a\0b,c\0\n\0m=1\n"sv, "[s]1\nk@2=a|a,c\n"}});
}

TEST(ParScanner, BuffersTakeWhatTheyHold) {
    CTextParScanner scanner("[a_long_section_name]\nkey = value, 2\n");
    std::array<char, 256> text{};
    EXPECT_TRUE(scanner.GetFirstSection(4, text.data()));
    EXPECT_STREQ(text.data(), "a_lo");
    EXPECT_TRUE(scanner.GetFirstKey(255, text.data()));
    EXPECT_STREQ(text.data(), "key");
    EXPECT_TRUE(scanner.GetKeyPars(255, text.data()));
    EXPECT_STREQ(text.data(), "value, 2");
    EXPECT_TRUE(scanner.GetFirstPar(255, text.data()));
    EXPECT_STREQ(text.data(), "value");
    std::uint32_t separator = 0;
    EXPECT_TRUE(scanner.GetNextPar(255, text.data(), separator));
    EXPECT_STREQ(text.data(), "2");
    EXPECT_EQ(separator, kComma);
    EXPECT_FALSE(scanner.GetNextPar(255, text.data(), separator));
    EXPECT_FALSE(scanner.GetNextKey(255, text.data()));
    EXPECT_FALSE(scanner.GetKeyPars(255, text.data()));
    EXPECT_STREQ(text.data(), "");
    EXPECT_FALSE(scanner.GetFirstPar(255, text.data()));
    EXPECT_EQ(scanner.GetKeyLine(), 0U);
    EXPECT_FALSE(scanner.GetNextSection(255, text.data()));
    EXPECT_EQ(scanner.GetSectionLine(), 0U);
    EXPECT_EQ(scanner.GetActSectionHandle(), CParScanner::kNoSection);
}

/// A malformed header ends the keys of the section before it, also where a header after a comment follows. So reading
/// the keys of the second section leaves those of the first alone, and a token that was peeked at goes into the second.
TEST(ParScanner, KeysEndAtAMalformedHeader) {
    CTextParScanner scanner("[a]\nk=1\n[x\n(**)[b]\nm=2\n");
    scanner.SetActSectionHandle(0);
    const CSection *first = scanner.ActSection();
    scanner.SetActSectionHandle(1);
    TToken token;
    std::uint32_t error = 0;
    ASSERT_TRUE(scanner.ReadToken(error, token, false));
    ASSERT_TRUE(scanner.ReadToken(error, token, true));
    ASSERT_EQ(token.kind, kEqual);
    scanner.LoadSectionData(scanner.ActSection());
    EXPECT_FALSE(first->read);
    EXPECT_FALSE(scanner.FirstKey()) << "the `=` that was peeked at takes the line along";
    EXPECT_TRUE(scanner.FirstSection() && scanner.FirstKey());
    EXPECT_EQ(scanner.KeyName(), "k");
}

TEST(ParScanner, TokensOfTheTape) {
    CTextParScanner scanner("[a]\nk = x , (* c *) y ; z\n");
    ASSERT_TRUE(scanner.FirstSection());
    scanner.SetActSectionHandle(0);
    EXPECT_TRUE(scanner.TapeFind(kEqual, kLineEnd));
    EXPECT_EQ(scanner.GetActPos(), 4U);
    std::array<char, 256> text{};
    bool end = true;
    EXPECT_FALSE(scanner.AppendStrUntilToken(255, text.data(), kComma, kLineEnd, kLineEnd, end));
    EXPECT_STREQ(text.data(), "x");
    EXPECT_FALSE(end);
    EXPECT_EQ(scanner.AppendStrUntilTokenEx(255, text.data(), (1ULL << kSemicolon) | (1ULL << kLineEnd), end),
              kSemicolon);
    EXPECT_STREQ(text.data(), "y");
    TToken token;
    std::uint32_t error = 0;
    EXPECT_TRUE(scanner.ReadToken(error, token, true));
    EXPECT_EQ(token.kind, kBlank);
    EXPECT_TRUE(scanner.TapeFind(kBlank, kLineEnd)) << "the token that was peeked at comes first";
    EXPECT_TRUE(scanner.AppendStrUntilToken(255, text.data(), kComma, kLineEnd, kLineEnd, end));
    EXPECT_STREQ(text.data(), "z");
    EXPECT_EQ(scanner.AppendStrUntilTokenEx(255, text.data(), 0, end), kLineEnd);
    EXPECT_TRUE(end);
    EXPECT_FALSE(scanner.TapeFind(kBlank, kLineEnd));
    // The blank after a value is read up to the next token; the first dot of a range is read with its number.
    CTextParScanner ranges("[a]\n.\nk=x 1..5\n");
    std::string_view value;
    ASSERT_TRUE(ranges.FirstSection() && ranges.FirstKey() && ranges.NextKey() && ranges.FirstValue(value));
    ranges.SetActSectionHandle(0);
    EXPECT_TRUE(ranges.TapeFind(kDotDot, kLineEnd));
}

TEST(ParScanner, CopiesShareTheText) {
    CTextParScanner scanner("[a]\nk=1,2\n[b]\n");
    ASSERT_TRUE(scanner.FirstSection() && scanner.FirstKey());
    std::string_view value;
    ASSERT_TRUE(scanner.FirstValue(value));
    CParScanner copy = scanner;
    EXPECT_TRUE(scanner.NextSection());
    EXPECT_NE(scanner.ActSection(), nullptr);
    scanner.Done();
    EXPECT_EQ(scanner.ActSection(), nullptr);
    EXPECT_FALSE(scanner.FirstSection());
    std::uint32_t separator = 0;
    EXPECT_TRUE(copy.NextValue(value, separator));
    EXPECT_EQ(value, "2");
    EXPECT_TRUE(copy.NextSection());
    EXPECT_EQ(copy.SectionName(), "b");
}

TEST(ParScanner, NothingWithoutAText) {
    CParScanner scanner;
    EXPECT_FALSE(scanner.Init(1));
    EXPECT_FALSE(scanner.FirstSection());
    EXPECT_FALSE(scanner.FirstKey());
    EXPECT_EQ(scanner.GetSectionLine() + scanner.GetKeyLine(), 0U);
    Init_();
    Init_();
}

TEST(ParScanner, Files) {
    const CTemporaryDirectory directory;
    WriteBytes("a.par", "[s]\r\nk=1\r\n");
    CFileParScanner scanner;
    EXPECT_TRUE(scanner.Init("a.par", 1));
    EXPECT_EQ(SurfaceText(scanner, false), "[s]1\nk@2=1|1\n");
    for (const char *path : {".", "b.par", static_cast<const char *>(nullptr)}) {
        EXPECT_FALSE(CFileParScanner().Init(path, 1));
    }
}

TEST(ParScanner, Views) {
    CTextView view;
    CViewParScanner empty;
    EXPECT_TRUE(empty.Init(&view, 1));
    EXPECT_FALSE(empty.FirstSection());
    view.InsertText("[s]\nk=1\n");
    CViewParScanner scanner;
    EXPECT_TRUE(scanner.Init(&view, 1));
    EXPECT_EQ(SurfaceText(scanner, false), "[s]1\nk@2=1|1\n");
    CViewParScanner none;
    EXPECT_FALSE(none.Init(nullptr, 1));
}

/// Sections that are joined share one list of keys: all lists together hold each line once, in whatever order the
/// sections are read.
TEST(ParScanner, JoinedSectionsShareTheirKeys) {
    constexpr std::uint32_t kCount = 1000;
    std::string text;
    for (std::uint32_t at = 0; at < kCount; ++at) {
        text += "(**)[a]\nk=1\n";
    }
    for (const bool backwards : {false, true}) {
        CTextParScanner scanner(text);
        std::set<const CKey *> keys;
        for (std::uint32_t at = 0; at < kCount; ++at) {
            scanner.SetActSectionHandle(backwards ? kCount - 1 - at : at);
            scanner.LoadSectionData(scanner.ActSection());
            const CSection &section = *scanner.ActSection();
            keys.insert({section.keys, section.keys + section.KeyCount() - 1});
        }
        EXPECT_EQ(scanner.GetActSectionHandle(), backwards ? 0 : kCount - 1);
        EXPECT_EQ(keys.size(), kCount) << backwards;
    }
}

/// Twenty times the text takes twenty times the time, and not four hundred times.
TEST(ParScanner, LargeTextsTakeTimeInProportion) {
    const auto read = [](std::string_view before, std::string_view part, int count) {
        std::string text(before);
        for (int at = 0; at < count; ++at) {
            text += part;
        }
        const std::clock_t start = std::clock();
        CTextParScanner scanner(text);
        std::uint32_t sections = 0;
        for (bool section = scanner.FirstSection(); section; section = scanner.NextSection()) {
            sections = scanner.GetActSectionHandle() + 1;
            std::string_view value;
            std::uint32_t separator = 0;
            for (bool more = scanner.FirstKey() && scanner.FirstValue(value); more;) {
                more = scanner.NextValue(value, separator);
            }
        }
        for (std::uint32_t handle = sections; handle-- > 0;) {
            scanner.SetActSectionHandle(handle);
            EXPECT_TRUE(scanner.GetSectionLine() > handle);
        }
        return std::clock() - start;
    };
    for (const auto &[before, part] : {TCase{"", "(**)[a]\n"},
                                       {"", "[a]\n"},
                                       {"", "[a\n"},
                                       {"[s]\nk=", "a,"},
                                       {"[s]\nk=", "' ',(**) "},
                                       {"[s]\n", "[ "},
                                       {"[s]\n", "(*"},
                                       {"[s]\n", "'' [ "},
                                       {"[s]\n", "k=1\n"}}) {
        constexpr int kCount = 4'000;
        std::clock_t few = read(before, part, kCount);
        for (int again = 0; again < 2; ++again) {
            few = std::max(few, read(before, part, kCount));
        }
        ASSERT_LT(read(before, part, 20 * kCount), 60 * few + CLOCKS_PER_SEC / 50) << part;
    }
}

}  // namespace
