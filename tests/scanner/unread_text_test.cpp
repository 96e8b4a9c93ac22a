#include "scanner/unread_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace par_scanner;

/// The starts as LINE:COLUMN and the first letter of the reason: t text before the first header, h header, f failure,
/// u unfinished line.
std::string Starts(std::string_view text) {
    std::string starts;
    for (const TUnreadText &unread : FindUnreadText(text)) {
        const char *reason = unread.reason == TUnreadReason::kBeforeFirstHeader       ? "t "
                             : unread.reason == TUnreadReason::kFromMalformedHeaderOn ? "h "
                             : unread.reason == TUnreadReason::kUnfinishedLine        ? "u "
                                                                                      : "f ";
        starts += std::to_string(unread.line) + ":" + std::to_string(unread.column) + reason;
    }
    return starts;
}

TEST(UnreadText, Starts) {
    const struct {
        std::string_view text;
        std::string_view starts;
    } cases[] = {
        {"", ""},
        {"\r\n  (* c\n *)\n[s]\r\nk=1\r\n(* c *)", ""},
        {"\n x\ny\n[s]\n", "2:2t "},
        {"(* *) x\n", "1:7t "},
        {"(* *)x\n", "1:6t "},
        {"\r[a]\n", "1:2t "},
        {"[x\n[s]\n", "1:1t "},
        {"[s]\nk\n [x\nl\n[y\n[t]\n[z", "3:2h 7:1h "},
        {"[s]\n(**)[x\n(**) [y\n\t[z\n", "3:6h "},
        {"[s] rest [x\nk=[y\n", ""},
        {"[s]\nk='a\nl\n", "2:3f "},
        {"[s]\nk='a", "2:3f "},
        {"[s]\nk=(*\n*)(* (*\n*)", "3:3f "},
        {"[s]\nk=1 12EF\n[x\n", "2:5f "},
        {"12EF\n[s]\n", "1:1f "},
        {"x\n[s] 'a\n[t]\n", "1:1t 2:5f "},
        {"[s]\n[t 'a\n", "2:4f "},
        {"[s]\nk\n(* *) l m", "3:7u "},
        {"[s]\n(**)[l", "2:5u "},
        {"[s] k\nl=", ""},
        {"[s]\n[x\nl", "2:1h "},
        {"[s]\n= k", ""},
    };
    for (const auto &each : cases) {
        EXPECT_EQ(Starts(each.text), each.starts) << each.text;
    }
}

}  // namespace
