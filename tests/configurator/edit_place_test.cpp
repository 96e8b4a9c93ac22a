#include "configurator/edit_place.h"

#include <gtest/gtest.h>

#include "tests/support/every_text.h"

using kq_pdt::ParseEditPlace;
using kq_pdt::TEditPlace;
using kq_pdt::TPlaceName;

namespace {

TEST(EditPlace, AnyNameReadsAsItWasWritten) {
    ForEveryText({"a", "1", "/", "#", ":", "@", "=", "\\"}, 3, [](const std::string &name) {
        for (const std::uint32_t number : {0U, 1U, 23U}) {
            const TPlaceName written{name, number};
            for (const char *cell : {"", ":4", "@5"}) {
                TEditPlace place;
                const std::string text = WriteSectionName(written) + "/" + WriteKeyName(written) + cell;
                ASSERT_TRUE(ParseEditPlace(text, place)) << text;
                ASSERT_TRUE(place.key) << text;
                for (const TPlaceName &read : {place.section, *place.key}) {
                    EXPECT_EQ(read.text, name) << text;
                    EXPECT_EQ(read.number, number) << text;
                }
                EXPECT_EQ(place.number, *cell == 0 ? 0U : *cell == ':' ? 4U : 5U) << text;
            }
            TEditPlace place;
            ASSERT_TRUE(ParseEditPlace(WriteSectionName(written) + ":6", place));
            EXPECT_EQ(place.section.text, name);
            EXPECT_EQ(place.section.number, number);
            EXPECT_FALSE(place.key);
            EXPECT_EQ(place.number, 6U);
        }
    });
}

TEST(EditPlace, WhatIsNoNumberAtTheEndBelongsToTheName) {
    struct TRow {
        const char *text;
        const char *section;
        const char *key;
    };
    for (const TRow &row : {TRow{"a:b", "a:b", nullptr},
                            {"a#", "a#", nullptr},
                            {"a@1", "a@1", nullptr},
                            {"a:1/b", "a:1", "b"},
                            {"a/b/c", "a", "b/c"},
                            {"a/b:1x", "a", "b:1x"},
                            {"a/#b@", "a", "#b@"},
                            {"a\\", "a\\", nullptr},
                            {"/", "", ""}}) {
        TEditPlace place;
        EXPECT_TRUE(ParseEditPlace(row.text, place)) << row.text;
        EXPECT_EQ(place.section.text, row.section) << row.text;
        EXPECT_EQ(place.key.has_value(), row.key != nullptr) << row.text;
        EXPECT_EQ(place.key ? place.key->text : "", row.key != nullptr ? row.key : "") << row.text;
        EXPECT_EQ(place.section.number + place.number, 0U) << row.text;
    }
}

}  // namespace
