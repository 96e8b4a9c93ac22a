#include "tools/session/script.h"

#include <gtest/gtest.h>

namespace {

/// The only command of a script that has to be right.
TScriptCommand Parsed(const std::string &script) {
    std::vector<TScriptMistake> mistakes;
    const std::vector<TScriptCommand> commands = ParseScript(script, mistakes);
    EXPECT_TRUE(mistakes.empty()) << script << ": " << mistakes.front().text;
    EXPECT_EQ(commands.size(), 1U) << script;
    return commands.empty() ? TScriptCommand() : commands.front();
}

/// The mistakes of a script, each as LINE: TEXT.
std::string Mistakes(const std::string &script) {
    std::vector<TScriptMistake> mistakes;
    ParseScript(script, mistakes);
    std::string text;
    for (const TScriptMistake &mistake : mistakes) {
        text += std::to_string(mistake.line) + ": " + mistake.text + "\n";
    }
    return text;
}

TEST(Script, TakesWords) {
    struct TRow {
        const char *line;
        std::string text;
    };
    const TRow rows[] = {
        {"type a", "a"},
        {"\t type \t a\t", "a"},
        {"type \"\"", ""},
        {"type \"a b\"", "a b"},
        {R"(type "\"\\\n\r\t")", "\"\\\n\r\t"},
        {"type a\\n", "a\\n"},
        {"type a\"b\"", "a\"b\""},
        {"type #", "#"},
        {"\"type\" a\r", "a"},
        {"\xEF\xBB\xBFtype a", "a"},
        {"# a remark\n\n \t# another\ntype \xC5\x99\n", "\xF8"},
    };
    for (const TRow &row : rows) {
        const TScriptCommand command = Parsed(row.line);
        EXPECT_EQ(command.verb, TScriptVerb::kType) << row.line;
        ASSERT_EQ(command.arguments.size(), 1U) << row.line;
        EXPECT_EQ(command.arguments[0].text, row.text) << row.line;
    }
    EXPECT_EQ(Parsed("\r\n# x\r\n type a").line, 3U);
}

TEST(Script, TakesPlaces) {
    struct TRow {
        const char *line;
        bool channels;
        std::vector<std::uint32_t> rows;
        std::uint32_t column;
    };
    const TRow rows[] = {
        {"select 3:1", false, {3}, 1},
        {"edit 3.2.1:12", false, {3, 2, 1}, 12},
        {"set 4294967295:2 x", false, {4294967295U}, 2},
        {"set channels 2:3 real", true, {2}, 3},
    };
    for (const TRow &row : rows) {
        const TScriptCommand command = Parsed(row.line);
        const TPlace &place = command.arguments.at(0).place;
        EXPECT_EQ(place.channels, row.channels) << row.line;
        EXPECT_EQ(place.rows, row.rows) << row.line;
        EXPECT_EQ(place.column, row.column) << row.line;
    }
}

TEST(Script, TakesNumbersAndRepeatedWords) {
    EXPECT_EQ(Parsed("setting p n -2147483648").arguments.at(2).number, INT32_MIN);
    EXPECT_EQ(Parsed("setting p n 4294967295").arguments.at(2).number, UINT32_MAX);
    EXPECT_EQ(Parsed("language JP").arguments.at(0).number, 3);
    EXPECT_EQ(Parsed("language 9").arguments.at(0).number, 9);
    EXPECT_EQ(Parsed("answer yes no cancel").arguments.size(), 3U);
    EXPECT_EQ(Parsed("when-found confirm").arguments.size(), 1U);
    EXPECT_EQ(Parsed("when-found confirm 7 4294967295").arguments.at(2).number, UINT32_MAX);
    EXPECT_TRUE(Parsed("state").arguments.empty());
    EXPECT_EQ(Parsed("state dmf window").arguments.at(0).text, "dmf");
}

TEST(Script, TakesTheRestOfTheLineAsJson) {
    EXPECT_EQ(Parsed("expect /window/tab 1").arguments.at(1).text, "1");
    EXPECT_EQ(Parsed("expect \"/a b\"   \"x y\"").arguments.at(1).text, "\"x y\"");
    EXPECT_EQ(Parsed("expect \"\" {\"window\": \"\xC5\x99\"}").arguments.at(1).text, "{\"window\": \"\xC5\x99\"}");
}

TEST(Script, ReportsEachWrongLine) {
    struct TRow {
        const char *line;
        const char *mistake;
    };
    const TRow rows[] = {
        {"opne a b c", "there is no command opne"},
        {"\"\"", "there is no command "},
        {"open a b", "usage: open MODULE PAR DMF"},
        {"undo 1", "usage: undo"},
        {"set 1:1", "usage: set PLACE TEXT"},
        {"set channels 1:1", "usage: set PLACE TEXT"},
        {"select channels", "usage: select PLACE"},
        {"answer", "usage: answer yes|no|cancel ..."},
        {"when-found close 1", "usage: when-found confirm KEY ...|close"},
        {"when-found", "usage: when-found confirm KEY ...|close"},
        {"select channels 1.1:1", "\"1.1:1\" is no place"},
        {"select 0:1", "\"0:1\" is no place"},
        {"select 1:0", "\"1:0\" is no place"},
        {"select 1.:1", "\"1.:1\" is no place"},
        {"select 1", "\"1\" is no place"},
        {"select :1", "\":1\" is no place"},
        {"select 4294967296:1", "is no place"},
        {"tab 3", "\"3\" is no tab"},
        {"message -1", "\"-1\" is no number"},
        {"work-area 2147483648 1", "is no number"},
        {"setting p n -2147483649", "is no number"},
        {"language cz", "\"cz\" is no language"},
        {"answer ok", "\"ok\" is no answer"},
        {"while-searching close", "neither cancel nor wait"},
        {"state sheets", "\"sheets\" is no part of the state"},
        {"expect window 1", "\"window\" is no JSON pointer"},
        {"expect /a~2 1", "is no JSON pointer"},
        {"expect /a", "what follows the pointer is no JSON value"},
        {"expect /a 1 2", "what follows the pointer is no JSON value"},
        {"type \"a", "the closing quote is missing"},
        {"type \"a\\", "a backslash precedes"},
        {R"(type "\x")", "a backslash precedes"},
        {"type \"a\"b", "a blank is missing after the closing quote"},
        {"undo \"", "the closing quote is missing"},
        {"type \xE2\x98\x83", "code page 1250 lacks"},
        {"type \xFF", "this isn't UTF-8"},
        {"file \"\"", "is no path"},
    };
    for (const TRow &row : rows) {
        const std::string mistakes = Mistakes(row.line);
        EXPECT_TRUE(mistakes.starts_with("1: ")) << row.line;
        EXPECT_NE(mistakes.find(row.mistake), std::string::npos) << row.line << "\n" << mistakes;
    }
    EXPECT_EQ(Mistakes("open\nundo\n\nredo x\n"), "1: usage: open MODULE PAR DMF\n4: usage: redo\n");
    EXPECT_EQ(Mistakes("file " + std::string(259, 'a')), "");
    EXPECT_NE(Mistakes("file " + std::string(260, 'a')), "");
}

}  // namespace
