#include "platform/view/controls.h"

#include <gtest/gtest.h>

#include <string>

namespace {

CComboBox::TMode Mode(bool free_text) { return free_text ? CComboBox::TMode::kFreeText : CComboBox::TMode::kList; }

TEST(ComboBox, SelectsFrom1AndTypesIfItMay) {
    for (const bool free_text : {false, true}) {
        CComboBox box(Mode(free_text));
        EXPECT_FALSE(box.UserSelect(1));
        box.AppendEntry("one");
        box.AppendEntry("two");
        EXPECT_EQ(box.EntryCount(), 2U);
        EXPECT_EQ(box.Entry(2), "two");
        EXPECT_EQ(box.Entry(0), "");
        EXPECT_EQ(box.Entry(3), "");
        box.Select(2);
        EXPECT_EQ(box.Text(), "two");
        EXPECT_TRUE(box.UserSelect(1));
        EXPECT_EQ(box.Text(), "one");
        for (const std::size_t position : {0U, 3U}) {
            EXPECT_FALSE(box.UserSelect(position));
            EXPECT_EQ(box.Selected(), 1U);
        }
        EXPECT_EQ(box.UserType("two"), free_text);
        EXPECT_EQ(box.Selected(), free_text ? 0U : 1U) << "a typed text is free even if it equals an entry";
        EXPECT_EQ(box.Text(), free_text ? "two" : "one");
        box.Select(9);
        EXPECT_EQ(box.Selected(), 0U);
        EXPECT_EQ(box.Text(), "");
    }
}

TEST(IntegerCountBox, KeepsAPersonWithinItsLimits) {
    constexpr std::uint32_t kMax = 0xFFFFFFFF;
    struct TRow {
        std::uint32_t value, from, to;
        std::vector<std::pair<std::string_view, std::uint32_t>> typed;  ///< and the value after it
    };
    for (const TRow &row : {
             TRow{7, 5, 10, {{"5", 5}, {"4", 7}, {"10", 10}, {"11", 7}, {"x", 7}, {"", 7}, {"-6", 7}}},
             {7, 5, 10, {{"+", 8}, {"-", 6}}},
             {7, 0, 0, {{"0", 0}, {"4294967295", kMax}, {"4294967296", 7}, {"+", 8}}},
             {7, 5, 0, {{"4294967295", kMax}, {"4", 7}}},
             {7, 9, 3, {{"10", 10}}},
             {7, 0, 1, {{"1", 1}, {"2", 7}}},
             {7, 3, 3, {{"3", 3}, {"4", 7}}},
             {10, 5, 10, {{"+", 10}}},
             {5, 5, 10, {{"-", 5}}},
             {99, 5, 10, {{"100", 99}, {"+", 99}, {"-", 10}}},
             {1, 5, 10, {{"+", 5}, {"-", 1}}},
             {kMax, 0, 0, {{"+", kMax}}},
             {0, 0, 0, {{"-", 0}}},
         }) {
        for (const auto &[text, after] : row.typed) {
            CIntegerCountBox box(row.value, row.from, row.to);
            EXPECT_EQ(box.Value(), row.value) << "the program's value stays even outside the limits";
            const bool taken = text == "+" ? box.UserStepUp() : text == "-" ? box.UserStepDown() : box.UserType(text);
            EXPECT_EQ(box.Value(), after) << row.value << " in " << row.from << ".." << row.to << " typed " << text;
            EXPECT_EQ(taken, row.value != after);
        }
    }
}

TEST(EditBox, TakesOneLineOf255Characters) {
    for (const std::size_t length : {254U, 255U, 256U}) {
        CEditBox box("old");
        EXPECT_TRUE(box.UserType(std::string(length, 'x')));
        EXPECT_EQ(box.Text().size(), std::min<std::size_t>(length, 255));
        EXPECT_TRUE(box.UserType("pasted\r\nlines"));
        EXPECT_EQ(box.Text(), "pasted");
    }
}

}  // namespace
