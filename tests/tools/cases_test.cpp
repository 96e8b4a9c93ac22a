#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "platform/base/code_page.h"
#include "tests/support/temporary_directory.h"
#include "tests/tools/case_file.h"
#include "tests/tools/run_program.h"

namespace {

using TJson = nlohmann::ordered_json;

const std::string kRoot = std::string(KQ_SOURCE_DIR) + "/";
const std::string kBuilt = std::string(KQ_BINARY_DIR) + "/";
/// Without --json their output is a file, so in code page 1250.
const std::set<std::string> kFileCommands = {"format", "dmf", "set", "add", "remove"};

std::vector<std::filesystem::path> CaseFiles() {
    std::vector<std::filesystem::path> paths;
    for (const auto &entry : std::filesystem::directory_iterator(kRoot + "tests/cases")) {
        if (entry.path().extension() == ".txt") {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

void Replace(std::string &text, const std::string &what, const std::string &with) {
    for (std::size_t start = text.find(what); start != std::string::npos;
         start = text.find(what, start + with.size())) {
        text.replace(start, what.size(), with);
    }
}

/// An actual output, as the case files show texts.
std::string Shown(std::string text) {
    Replace(text, "\r\n", "\n");
    Replace(text, "\r", "\\r");
    Replace(text, kBuilt, "^");
    Replace(text, kRoot, "@");
    if (!text.empty() && text.back() != '\n') {
        text += "\n\\ no line end\n";
    }
    return text;
}

/// A JSON text, or the part of it that a pointer names, in a layout that puts differences into few lines.
std::string JsonLayout(const std::string &text, const std::string &pointer) {
    if (text.empty()) {
        return "";
    }
    TJson json = TJson::parse(text, nullptr, false);
    if (json.is_discarded()) {
        return "no JSON:\n" + text;
    }
    const TJson::json_pointer part(pointer);
    return json.contains(part) ? json[part].dump(1) + "\n" : "nothing at " + pointer + "\n";
}

/// Runs the runs of one case in the current directory and expects what the case file says.
class CCaseCheck {
public:
    CCaseCheck(const std::filesystem::path &file, const TCase &each) : file_(file), case_(each) {}
    void Check() {
        for (const TCaseRun &run : case_.runs) {
            Check(run);
        }
    }

private:
    static bool Has(const TCaseRun &run, const char *argument) {
        return std::find(run.arguments.begin(), run.arguments.end(), argument) != run.arguments.end();
    }

    void Expect(const TCaseRun &run, const std::string &what, const std::string &expected, const std::string &actual) {
        const testing::ScopedTrace where(file_.c_str(), run.line, case_.title + ": " + what);
        EXPECT_EQ(expected, actual);
    }

    void Check(const TCaseRun &run) {
        for (const auto &[name, bytes] : run.files) {
            WriteBytes(name, bytes);
        }
        std::vector<std::string> arguments = run.arguments;
        for (std::string &argument : arguments) {
            if (argument.starts_with('@') || argument.starts_with('^')) {
                argument.replace(0, 1, argument[0] == '@' ? kRoot : kBuilt);
            }
        }
        std::string input = run.input;
        if (!run.steps.empty()) {
            Replace(input, " @", " " + kRoot);
            Replace(input, " ^", " " + kBuilt);
        }
        const TRunResult result = RunProgram(arguments, input);
        CheckSession(run, result.output);
        Expect(run, "exit code", std::to_string(run.exit_code), std::to_string(result.exit_code));
        CheckOutput(run, result.output);
        if (run.errors || run.exit_code == 0 || (Has(run, "--json") && run.exit_code == 1)) {
            Expect(run, "standard error", run.errors.value_or(""), Shown(result.errors));
        }
        for (const auto &[name, text] : run.left_files) {
            const bool there = std::filesystem::exists(name);
            Expect(run, "existence of " + name, text ? "yes" : "no", there ? "yes" : "no");
            Expect(run, name, text.value_or(""), Shown(kq_base::ToUtf8(ReadBytes(name))));
        }
    }

    /// Each command was carried out or refused, and its events came, as the steps say.
    void CheckSession(const TCaseRun &run, const std::string &output) {
        if (run.steps.empty()) {
            return;
        }
        const TJson answers = TJson::parse(output, nullptr, false);
        Expect(run, "commands", std::to_string(run.steps.size()), std::to_string(answers.size()));
        for (const TJson &answer : answers) {
            const auto line = answer["line"].get<std::uint32_t>();
            const TSessionStep &step = run.steps.at(line);
            const std::string what = "line " + std::to_string(run.line + static_cast<int>(line)) + ": " + step.command +
                                     (answer.contains("found") ? ", found " + answer["found"].dump() : "");
            Expect(run, what, step.refused ? "refused" : "done", answer["ok"] == true ? "done" : "refused");
            if (step.events) {
                Expect(run, what, EventLines(*step.events), EventLines(answer["events"]));
            }
            if (!step.given.empty()) {
                const TJson given = TJson::parse(step.given, nullptr, false);
                TJson expected = answer;
                expected.update(given);
                Expect(run, what, Shown(expected.dump(1)), Shown(answer.dump(1)));
            }
        }
    }

    static std::string EventLines(const std::vector<std::string> &events) {
        std::string lines;
        for (const std::string &event : events) {
            lines += TJson::parse(event, nullptr, false).dump() + "\n";
        }
        return lines;
    }

    static std::string EventLines(const TJson &events) {
        std::string lines;
        for (const TJson &event : events) {
            lines += Shown(event.dump() + "\n");
        }
        return lines;
    }

    void CheckOutput(const TCaseRun &run, const std::string &output) {
        const bool json = Has(run, "--json");
        const bool produced = !json && kFileCommands.contains(run.arguments.front());
        for (const auto &[pointer, text] : run.outputs) {
            if (json) {
                Expect(run, "JSON " + pointer, JsonLayout(text, ""), JsonLayout(output, pointer));
            } else {
                Expect(run, "standard output", text, Shown(produced ? kq_base::ToUtf8(output) : output));
            }
        }
    }

    const std::filesystem::path &file_;
    const TCase &case_;
};

class CCases : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(CCases, ComeOutAsWritten) {
    std::vector<TCase> cases;
    std::string mistake;
    ASSERT_TRUE(ReadCases(GetParam(), cases, mistake)) << mistake;
    for (const TCase &each : cases) {
        const CTemporaryDirectory directory;
        CCaseCheck(GetParam(), each).Check();
    }
}

std::string NameOf(const testing::TestParamInfo<std::filesystem::path> &info) {
    std::string name = info.param.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char character) { return std::isalnum(character) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, CCases, testing::ValuesIn(CaseFiles()), NameOf);

}  // namespace
