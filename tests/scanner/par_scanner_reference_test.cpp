#include <gtest/gtest.h>

#include "tests/scanner/nasty_texts.h"
#include "tests/scanner/reference_scanner.h"
#include "tests/scanner/surface_text.h"

// The scanner beside the plain rules: every short text of some alphabets, and long ones at random.

namespace {

void CheckAgainstReference(const std::string &text) {
    par_scanner::CTextParScanner scanner(text);
    CReferenceScanner reference(text);
    ASSERT_EQ(SurfaceText(scanner, true), SurfaceText(reference, true)) << text;
}

void CheckAfterHeader(const std::string &text) { CheckAgainstReference("[s]\n" + text); }

TEST(ParScannerAgainstReference, EveryShortText) {
    using namespace std::string_view_literals;
    ForEveryText({"[", "]", "=", ",", " ", "a", "\n", "(*", "*)"}, 5, CheckAgainstReference);
    ForEveryText({"a", "=", ",", " ", "\n", "\r", "'", "(*", "*)"}, 5, CheckAfterHeader);
    ForEveryText({"a=", "1", ".", "E", ",", " ", "\r\n", "<", ":", "\0"sv}, 5, CheckAfterHeader);
    ForEveryText({"[a]", "(**)[b]", "(*\n*)", "\n", "k=", "v ", "12EF", "["}, 5, CheckAgainstReference);
}

constexpr std::string_view kPieces =
    "[|]|=|,| |\n|\r\n|\r|'|''|(*|*)|(|12|1.5|E|E5|.|..|:=|<=|\t|name|[section]\n|\nkey = |\r\nkey = 1, 2\r\n|"
    "\n  plain = 10, 20 30 ,40\n|                                                                      |"
    "a_word_that_is_longer_than_any_block_of_bytes_that_are_looked_at_in_one_go";

/// Mostly regular lines, so that the ways through regular and odd lines alternate.
constexpr std::string_view kLines =
    "\r\nkey = 1, 2, abc\r\n|\nk=a b,c\n|[section]\r\n|   x = 1.5 , \n|\n'k=' = |name| , | |=|'q, q'|'it''s'| '(*' |(* "
    "c *)|"
    "(*(*'*)=*)|(* it's *)|*)|(* [ *) |(x)[| (x) |1E5|I2E| 0x1E,|1..5| 1..|\n.=|7.|!|\t|\"|\n(* c *) key = 2\n|\n  "
    "[s2] 'a'\n|\n(**)[s3]\n|\n|\r\n";

TEST(ParScannerAgainstReference, LongTexts) {
    CNastyTexts texts(kPieces, 7);
    CNastyTexts lines(kLines, 8);
    // What ends a text now and then, and tokens that are longer than a token may be or a look goes.
    const std::string word(350, '7');
    const std::string long_ones = word + "|x" + word + "|'" + word + "'";
    CNastyTexts ends(std::string(kLines).append("|'|(*|2E|\r|[|[x\n|").append(1, '\0').append("|" + long_ones), 9);
    for (int round = 0; round < 4000; ++round) {
        CheckAfterHeader(texts.Make(texts.Number(80)));
        CheckAgainstReference(lines.Make(lines.Number(60)));
        CheckAfterHeader(ends.Make(ends.Number(60)));
    }
}

TEST(ParScannerAgainstReference, TokensAsLongAsTokensMayBe) {
    for (std::size_t length = 1020; length < 1028; ++length) {
        for (const std::string text : {"7", "x", "'", "!"}) {
            std::string line = "k = " + text + std::string(length, text == "'" ? 'q' : text[0]) + text;
            CheckAfterHeader(line + ", 'a'\n" + line + "2E, 'b'\n");
            CheckAfterHeader(line + "E5, ''\nm=1\n");
        }
    }
}

/// One operation after the other in any order, results side by side.
TEST(ParScannerAgainstReference, OperationsInAnyOrder) {
    CNastyTexts texts(kPieces, 9);
    CNastyTexts lines(kLines, 10);
    for (int round = 0; round < 4000; ++round) {
        CNastyTexts &source = round % 2 == 0 ? texts : lines;
        const std::string text = "[s]\nk=1,2\n" + source.Make(texts.Number(60));
        par_scanner::CTextParScanner scanner(text);
        CReferenceScanner reference(text);
        std::string history;
        for (int step = 0; step < 60; ++step) {
            const std::uint32_t operation = texts.Number(10);
            const std::uint32_t handle = texts.Number(6) - 1;  // also the one that is none
            const std::uint32_t find = handle < 3 ? par_scanner::kComma : par_scanner::kDotDot;
            const auto perform = [&](auto &each) {
                std::string_view value;
                std::uint32_t separator = 0;
                const bool result = operation == 0   ? each.FirstSection()
                                    : operation == 1 ? each.NextSection()
                                    : operation == 2 ? each.FirstKey()
                                    : operation == 3 ? each.NextKey()
                                    : operation == 4 ? each.KeyPars(value)
                                    : operation == 5 ? each.FirstValue(value)
                                    : operation == 6 ? (each.SetActSectionHandle(handle), true)
                                    : operation == 7 ? each.TapeFind(find, par_scanner::kLineEnd)
                                                     : each.NextValue(value, separator);
                return std::to_string(operation) + (result ? "+" : "-") + std::string(value) + "," +
                       std::to_string(separator) + "#" + std::to_string(each.GetActSectionHandle()) + "[" +
                       std::string(each.SectionName()) + "]" + std::to_string(each.GetSectionLine()) +
                       std::string(each.KeyName()) + std::to_string(each.GetKeyLine()) + "{" +
                       std::to_string(each.GetActPos()) + "}";
            };
            const std::string expected = perform(reference);
            history += expected + "\n";
            ASSERT_EQ(perform(scanner), expected) << text << "\n--\n" << history;
        }
    }
}

}  // namespace
