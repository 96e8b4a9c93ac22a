#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/base/code_page.h"
#include "platform/view/text_view.h"

namespace {

using namespace kq_base::literals;

TEST(TextFind, FindsRoundTheText) {
    struct TRow {
        std::string_view text, find;
        std::string options;               ///< c: case, w: whole word, b: backwards
        std::vector<std::size_t> matches;  ///< of repeated finds, from the beginning on
    };
    // Clang 14 crashes at these literals inside of the table.
    constexpr std::string_view kMixed = "ab aab a_b ab1 AB"_cp;
    constexpr std::string_view kThrice = "xkůň KŮŇ kůňx"_cp;
    constexpr std::string_view kTwice = "kůň KŮŇ"_cp;
    constexpr std::string_view kLower = "kůň"_cp;
    constexpr std::string_view kUpper = "KŮŇ"_cp;
    constexpr std::string_view kSharp = "ßa a"_cp;
    for (const TRow &row : {
             TRow{"", "a", "", {}},
             {"abc", "", "", {}},
             {"abc", "abcd", "", {}},
             {"abAB", "ab", "", {0, 2, 0}},
             {"abAB", "AB", "c", {2, 2}},
             {"ab ab ab", "ab", "b", {6, 3, 0, 6}},
             {"aaaa", "aa", "", {0, 2, 0}},
             {"aabaab", "aab", "", {0, 3, 0}},
             {"aaab", "aab", "", {1, 1}},
             {"ababac", "abac", "", {2}},
             {"a\r\nb", "a\r\nb", "", {0}},
             {kMixed, "ab", "w", {0, 15, 0}},
             {kThrice, kLower, "w", {5, 5}},
             {kTwice, kUpper, "", {0, 4, 0}},
             {kTwice, kUpper, "cw", {4, 4}},
             {kSharp, "a", "w", {3}},
             {"Port=1\nPORT=2", "port", "wb", {7, 0, 7}},
         }) {
        CTextView view;
        view.InsertText(row.text);
        view.SetLineIndex(0, 0);
        const auto has = [&row](char option) { return row.options.find(option) != std::string::npos; };
        const CTextView::TFindOptions options{.match_case = has('c'), .whole_word = has('w'), .backwards = has('b')};
        EXPECT_EQ(view.UserFind(row.find, options), !row.matches.empty()) << row.text << " " << row.find;
        for (const std::size_t match : row.matches) {
            EXPECT_EQ(view.SelectionStart(), match) << row.text << " " << row.find;
            EXPECT_EQ(view.SelectionLength(), row.find.size());
            EXPECT_EQ(view.CursorOffset(), match + row.find.size());
            EXPECT_TRUE(view.UserFind(row.find, options));
        }
    }
}

TEST(TextFind, AgreesWithAPlainSearch) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        std::string pattern;
        for (std::size_t count = random() % 12; text.size() < count;) {
            text += "ab"[random() % 2];
        }
        for (std::size_t count = 1 + random() % 4; pattern.size() < count;) {
            pattern += "ab"[random() % 2];
        }
        const std::size_t cursor = random() % (text.size() + 1);
        const bool backwards = random() % 2 != 0;
        std::size_t expected =
            backwards ? cursor < pattern.size() ? std::string::npos : text.rfind(pattern, cursor - pattern.size())
                      : text.find(pattern, cursor);
        if (expected == std::string::npos) {
            expected = backwards ? text.rfind(pattern) : text.find(pattern);
        }
        CTextView view;
        view.InsertText(text);
        view.UserSelect(cursor, cursor);
        ASSERT_EQ(view.UserFind(pattern, {.backwards = backwards}), expected != std::string::npos) << text;
        if (expected != std::string::npos) {
            ASSERT_EQ(view.SelectionStart(), expected) << text << " " << pattern << " " << cursor << backwards;
        }
    }
}

TEST(TextFind, ReplacesAllInOneStep) {
    struct TRow {
        std::string_view text, find, with, result;
        std::size_t count, cursor;
        bool whole_word;
    };
    for (const TRow &row : {
             TRow{"xABxabx", "ab", "c", "xcxcx", 2, 4, false},
             {"aaa", "aa", "b", "ba", 1, 1, false},
             {"aaaa", "a", "", "", 4, 0, false},
             {"a aa a", "a", "bbb", "bbb aa bbb", 2, 10, true},
             {"aXa", "a", "a", "aXa", 2, 3, false},
             {"abc", "d", "e", "abc", 0, 0, false},
             {"abc", "", "e", "abc", 0, 0, false},
         }) {
        CTextView view;
        view.InsertText(row.text);
        view.SetLineIndex(0, 0);
        view.SetHistoryKept(false);
        view.SetHistoryKept(true);
        EXPECT_EQ(view.UserReplaceAll(row.find, row.with, {.whole_word = row.whole_word}), row.count) << row.text;
        EXPECT_EQ(view.Text(), row.result);
        EXPECT_EQ(view.CursorOffset(), row.cursor) << row.text;
        EXPECT_EQ(view.UserUndo(), row.result != row.text);
        EXPECT_EQ(view.Text(), row.text);
        EXPECT_FALSE(view.UserUndo());
    }
}

}  // namespace
