#include <gtest/gtest.h>

#include <regex>

#include "tests/support/temporary_directory.h"
#include "tests/tools/run_program.h"

namespace {

using TArgumentList = std::vector<std::string>;

TEST(Arguments, HelpAndVersionAreOutput) {
    EXPECT_TRUE(RunProgram({"--version"}).output.starts_with("kqcfg 1."));
    for (const TArgumentList &arguments : {TArgumentList{"--help"}, {"check", "--help"}, {"eval", "-h"}}) {
        const TRunResult result = RunProgram(arguments);
        EXPECT_EQ(result.exit_code, 0);
        EXPECT_NE(result.output.find("Usage: kqcfg"), std::string::npos) << result.output;
        EXPECT_EQ(result.errors, "");
    }
}

TEST(Arguments, WrongUsageIsReportedAndGivesTwo) {
    struct TRow {
        TArgumentList arguments;
        const char *message;
    };
    const TRow rows[] = {
        {{}, "A subcommand is required"},
        {{"chek"}, "there is no command chek"},
        {{""}, "there is no command"},
        {{"drive", "a.dll"}, "PAR is required"},
        {{"--json", "check", "a", "b"}, "--json"},
        {{"check"}, "PDT is required"},
        {{"check", "a.pdt"}, "PAR is required"},
        {{"check", "a", "b", "c"}, "not expected: c"},
        {{"check", "a", "b", "--jsno"}, "not expected: --jsno"},
        {{"check", "a", "b", "-o", "c"}, "not expected"},
        {{"check", "a", "b", "--language", "cz"}, "--language"},
        {{"check", "a", "b", "--language"}, "--language"},
        {{"check", "-", "-"}, "only one file can be standard input"},
        {{"check", "a", "-", "--dmf", "-"}, "only one file can be standard input"},
        {{"format", "a", "b", "--check", "-o", "c"}, "excludes"},
        {{"tokens", "a", "--raw", "--raws"}, "not expected: --raws"},
        {{"eval"}, "EXPR is required"},
        {{"eval", "1", "2"}, "not expected: 2"},
        {{"eval", "1", "--var"}, "--var"},
        {{"set", "a", "b"}, "PLACE is required"},
        {{"set", "a", "b", "S/k"}, "PLACE=VALUE"},
        {{"set", "a", "b", "S/k\\=1"}, "PLACE=VALUE"},
        {{"set", "a", "b", "S/k=\xE2\x98\x83"}, "code page 1250"},
        {{"add", "a", "b", "--check", "S"}, "not expected: --check"},
        {{"add", "a", "b", "S", "-o", "c", "--dmf-out", "./c"}, "the same file"},
        {{"remove", "a", "b", "S", "--dmf-out", "-"}, "the same file"},
        {{"remove", "-", "b", "S", "--dmf", "-"}, "only one file can be standard input"},
        {{"eval", "1", "--var", "n"}, "NAME=VALUE"},
        {{"eval", "1", "--var", "=1"}, "NAME=VALUE"},
        {{"eval", "1", "--var", "n=4294967296"}, "above 4294967295"},
        {{"eval", "1", "--var", "n=1", "--var", "n=2"}, "declared twice"},
        {{"eval", "1", "--var", "n=\xE2\x98\x83"}, "code page 1250"},
        {{"eval", "'\xE2\x98\x83'"}, "code page 1250"},
        {{"eval", "'\xC3'"}, "UTF-8"},
        {{"match", "'a'"}, "TEXT is required"},
        {{"match", "'a'", "\xE2\x98\x83"}, "code page 1250"},
        {{"match", "'\xE2\x98\x83'", "a"}, "code page 1250"},
        {{"match", "'a'", "--a"}, "TEXT is required"},
        {{"eval", "1", "-a"}, "not expected: -a"},
    };
    for (const TRow &row : rows) {
        const TRunResult result = RunProgram(row.arguments);
        EXPECT_EQ(result.exit_code, 2) << row.message;
        EXPECT_EQ(result.output, "") << row.message;
        EXPECT_NE(result.errors.find(row.message), std::string::npos) << row.message << "\nisn't in\n" << result.errors;
        EXPECT_NE(result.errors.find(": error: "), std::string::npos) << result.errors;
    }
}

// A user who types a tab gets every command and option, and none that doesn't exist.
TEST(Arguments, CompletionKnowsEveryCommandAndOption) {
    const std::string completion = ReadBytes(KQ_SOURCE_DIR "/tools/completions/kqcfg.bash");
    const std::string help = RunProgram({"--help"}).output;
    const std::string commands = help.substr(help.find("Subcommands:"));
    std::string options;
    const std::regex command_line("\n  ([a-z]+) ");
    for (auto found = std::sregex_iterator(commands.begin(), commands.end(), command_line);
         found != std::sregex_iterator(); ++found) {
        const std::string name = (*found)[1];
        EXPECT_NE(completion.find(name), std::string::npos) << name;
        options += RunProgram({name, "--help"}).output;
    }
    const std::regex option("--[a-z]+");
    const std::string known = help + options;
    for (const auto &[from, in] : {std::pair(&known, &completion), std::pair(&completion, &known)}) {
        for (auto found = std::sregex_iterator(from->begin(), from->end(), option); found != std::sregex_iterator();
             ++found) {
            EXPECT_NE(in->find(found->str()), std::string::npos) << found->str();
        }
    }
}

}  // namespace
