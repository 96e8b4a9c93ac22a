#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "platform/base/code_page.h"
#include "tests/support/temporary_directory.h"
#include "tests/tools/run_program.h"
#include "tools/console/diagnostics.h"
#include "tools/console/progress.h"
#include "tools/kqcfg.h"

namespace {

TEST(Console, EveryByteGoesOutAsItsCharacter) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '\n' && byte != '\r' && byte != '\'') {
            bytes += static_cast<char>(byte);
        }
    }
    const TRunResult result = RunProgram({"tokens", "--json", "-"}, "'" + bytes + "'");
    EXPECT_EQ(result.exit_code, 0);
    const nlohmann::json tokens = nlohmann::json::parse(result.output);
    EXPECT_EQ(tokens.at(0).at("text"), kq_base::ToUtf8(bytes));
}

TEST(Console, OutputThatCantBeWrittenIsAFailure) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{200000}}) {
        std::istringstream in(std::string(size, '+'));
        std::ofstream full("/dev/full");
        std::ostringstream err;
        TConsole console{in, COutput(full), err};
        EXPECT_EQ(RunKqcfg({"tokens", "-"}, console), 2);
        EXPECT_EQ(err.str(), "<stdout>: error: No space left on device\n");
    }
}

TEST(Console, FilesThatCantBeRead) {
    const CTemporaryDirectory directory;
    mkdir("folder", 0700);
    WriteBytes("good", "a");
    for (const char *name : {"missing", "folder", "missing/a", "good/a", ""}) {
        for (const std::vector<std::string> &arguments :
             {std::vector<std::string>{"tokens", name}, {"scan", "--json", name}}) {
            const TRunResult result = RunProgram(arguments);
            EXPECT_EQ(result.exit_code, 2) << name;
            EXPECT_EQ(result.output, "") << name;
            EXPECT_EQ(result.errors.find(std::string(name) + ": error: "), 0U) << result.errors;
        }
    }
}

TEST(Console, StandardInputThatCantBeRead) {
    std::ifstream in(".");
    std::ostringstream out;
    std::ostringstream err;
    TConsole console{in, COutput(out), err};
    EXPECT_EQ(RunKqcfg({"tokens", "-"}, console), 2);
    EXPECT_EQ(err.str(), "<stdin>: error: Is a directory\n");
}

/// What is printed about a position in a text.
std::string Printed(const std::string &text, const TDiagnostic &diagnostic, bool colour = false) {
    TTextConsole texts;
    texts.console.colour = colour;
    PrintDiagnostic(texts.console, CSourceText("p", text), diagnostic);
    return texts.err.str();
}

TEST(Diagnostics, MarkThePosition) {
    struct TRow {
        const char *text;
        std::uint32_t line;
        std::uint32_t column;
        TColumn meaning;
        const char *printed;
    };
    const TRow rows[] = {
        {"abc\ndef", 2, 2, TColumn::kAtText, "def\n ^\n"},
        {"abc\r\ndef", 1, 4, TColumn::kAtText, "abc\n   ^\n"},
        {"abc", 1, 9, TColumn::kAtText, "abc\n   ^\n"},
        {"\ta b", 1, 4, TColumn::kAtText, "\ta b\n\t  ^\n"},
        {"a\x1b[2J", 1, 1, TColumn::kAtText, "a [2J\n^\n"},
        {"nmae = 'x';", 1, 5, TColumn::kAfterToken, "nmae = 'x';\n^~~~\n"},
        {"a ; b", 1, 4, TColumn::kAfterToken, "a ; b\n  ^\n"},
        {"\x9Elu\x9D  ", 1, 7, TColumn::kAfterToken, "žluť  \n^~~~\n"},
        {"  K = 1, zwei, 3", 1, 15, TColumn::kAfterValue, "  K = 1, zwei, 3\n         ^~~~\n"},
        {"  K = 1 zwei  3", 1, 15, TColumn::kAfterValue, "  K = 1 zwei  3\n        ^~~~\n"},
        {"  K = 1, zwei\r\n", 1, 1, TColumn::kAfterValue, "  K = 1, zwei\n         ^~~~\n"},
        {"", 1, 1, TColumn::kAfterValue, ""},
        {"abc", 2, 1, TColumn::kAtText, ""},
    };
    for (const TRow &row : rows) {
        const std::string head = "p:" + std::to_string(row.line) + ":" + std::to_string(row.column) + ": error: t\n";
        EXPECT_EQ(Printed(row.text, {.text = "t", .line = row.line, .column = row.column, .meaning = row.meaning}),
                  head + row.printed)
            << row.text;
    }
}

TEST(Diagnostics, SayWhatIsKnown) {
    EXPECT_EQ(Printed("a", {.text = "t"}), "p: error: t\n");
    EXPECT_EQ(Printed("a", {.kind = TDiagnosticKind::kWarning, .text = "t", .line = 1}), "p:1: warning: t\n");
    EXPECT_EQ(Printed("a", {.kind = TDiagnosticKind::kNote, .text = "t"}, true),
              "\x1b[1mp:\x1b[0m \x1b[1;36mnote:\x1b[0m t\n");
}

TEST(Diagnostics, ShowAWindowOfALongLine) {
    const std::string printed =
        Printed(std::string(1000, 'a') + "!" + std::string(1000, 'b'), {.text = "t", .line = 1, .column = 1001});
    EXPECT_EQ(printed, "p:1:1001: error: t\n" + std::string(80, 'a') + "!" + std::string(79, 'b') + "\n" +
                           std::string(80, ' ') + "^\n");
}

TEST(Progress, ShowsOnATerminalAfterAWhileAndGoesAway) {
    for (const bool terminal : {true, false}) {
        TTextConsole texts;
        texts.console.terminal = terminal;
        { const CProgress short_work(texts.console, "Work"); }
        EXPECT_EQ(texts.err.str(), "");
        {
            const CProgress long_work(texts.console, "Work", std::chrono::milliseconds(1));
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        EXPECT_EQ(texts.err.str().find("\rWork ... 0 s"), terminal ? 0 : std::string::npos);
        EXPECT_EQ(texts.err.str().ends_with("\r\x1b[K"), terminal);
    }
}

}  // namespace
