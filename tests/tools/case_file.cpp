#include "tests/tools/case_file.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "platform/base/code_page.h"

namespace {

/// Everything between two head lines.
struct TSection {
    std::string head;  ///< the line without its "--- " or "=== "
    bool title = false;
    int line = 0;
    std::vector<std::string> text;
};

std::vector<TSection> CutIntoSections(std::istream &stream) {
    std::vector<TSection> sections;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const bool title = line.starts_with("=== ");
        if (title || line.starts_with("--- ")) {
            sections.push_back({line.substr(4), title, number, {}});
        } else if (!sections.empty()) {
            sections.back().text.push_back(line);
        }
    }
    for (std::size_t index = 0; index < sections.size(); ++index) {
        auto &text = sections[index].text;
        if (index + 1 == sections.size() || sections[index + 1].title) {
            while (!text.empty() && text.back().empty()) {
                text.pop_back();
            }
        }
    }
    return sections;
}

std::vector<std::string> Words(const std::string &line) {
    std::vector<std::string> words;
    bool quoted = false;
    bool inside = false;
    for (const char character : line) {
        const bool between = character == ' ' && !quoted;
        if (!between && !inside) {
            words.emplace_back();
        }
        inside = !between;
        if (character == '"') {
            quoted = !quoted;
        } else if (inside) {
            words.back() += character;
        }
    }
    return words;
}

std::string Joined(const std::vector<std::string> &lines, std::string_view line_end) {
    std::string text;
    for (const std::string &line : lines) {
        text.append(line).append(line_end);
    }
    return text;
}

bool ReplaceEscapes(std::string &bytes) {
    std::string replaced;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (bytes[index] != '\\') {
            replaced += bytes[index];
        } else if (bytes.compare(index, 2, "\\\\") == 0) {
            replaced += '\\';
            ++index;
        } else if (bytes.compare(index, 2, "\\x") == 0 && index + 4 <= bytes.size()) {
            replaced += static_cast<char>(std::stoi(bytes.substr(index + 2, 2), nullptr, 16));
            index += 3;
        } else {
            return false;
        }
    }
    bytes = replaced;
    return true;
}

/// The bytes of a file section, whose head is the name and the options.
bool FileBytes(const TSection &section, const std::vector<std::string> &head, std::string &bytes) {
    const auto has = [&head](const char *option) {
        return std::find(head.begin() + 1, head.end(), option) != head.end();
    };
    const std::string line_end = has("crlf") ? "\r\n" : "\n";
    std::string text = Joined(section.text, line_end);
    if (has("noeol") && !text.empty()) {
        text.resize(text.size() - line_end.size());
    }
    const std::size_t options = static_cast<std::size_t>(has("crlf")) + has("noeol") + has("escapes") + has("utf8");
    if (has("utf8")) {
        bytes = text;
    } else if (!kq_base::FromUtf8(text, bytes)) {
        return false;
    }
    return (!has("escapes") || ReplaceEscapes(bytes)) && options + 1 == head.size();
}

/// The script of a session. Each line that says what has to come of a command is left empty there, so that lines keep
/// their numbers.
bool TakeSession(const TSection &section, TCaseRun &run) {
    run.arguments = {"session", "--json", "-"};
    std::uint32_t number = 0;
    TSessionStep *step = nullptr;
    for (const std::string &line : section.text) {
        ++number;
        if (line.starts_with(">") || line.starts_with("= ")) {
            if (step == nullptr) {
                return false;
            }
            run.input += '\n';
            if (line.front() == '=') {
                step->given = line.substr(1);
                continue;
            }
            auto &events = step->events ? *step->events : step->events.emplace();
            if (line.find_first_not_of("> ") != std::string::npos) {
                events.push_back(line.substr(1));
            }
            continue;
        }
        const bool refused = line.starts_with("! ");
        const std::string command = refused ? line.substr(2) : line;
        run.input += command + '\n';
        if (!command.empty() && command.front() != '#') {
            step = &run.steps[number];
            *step = {.command = command, .refused = refused, .events = std::nullopt, .given = ""};
            run.exit_code = refused ? 1 : run.exit_code;
        }
    }
    return !run.steps.empty();
}

/// Makes cases of the sections of one file.
class CCaseReader {
public:
    explicit CCaseReader(std::vector<TCase> &cases) : cases_(cases) {}

    bool Add(const TSection &section) {
        const std::vector<std::string> head = Words(section.head);
        if (section.title) {
            cases_.push_back({section.head, {}});
            next_ = shared_;
            return true;
        }
        if (head.empty()) {
            return false;
        }
        if (cases_.empty()) {
            return FileBytes(section, head, shared_.files[head[0]]);
        }
        std::vector<TCaseRun> &runs = cases_.back().runs;
        if (head[0] == "run" || (head[0].starts_with("run=") && head[0].size() == 5)) {
            next_.exit_code = head[0] == "run" ? 0 : head[0].back() - '0';
            next_.line = section.line;
            next_.arguments.assign(head.begin() + 1, head.end());
            runs.push_back(next_);
            next_ = {};
            return true;
        }
        if (head[0] == "session") {
            next_.line = section.line;
            const bool taken = TakeSession(section, next_);
            runs.push_back(next_);
            next_ = {};
            return taken;
        }
        if (head[0] == "in") {
            return FileBytes(section, head, next_.input);
        }
        return AddExpectation(section, head, runs) || FileBytes(section, head, next_.files[head[0]]);
    }

    bool Complete() const { return !cases_.empty() && next_.files.empty() && next_.input.empty(); }

private:
    static bool AddExpectation(const TSection &section, const std::vector<std::string> &head,
                               std::vector<TCaseRun> &runs) {
        const std::string argument = head.size() > 1 ? head[1] : "";
        const std::string text = Joined(section.text, "\n");
        if (runs.empty()) {
            return false;
        }
        if (head[0] == "out") {
            runs.back().outputs[argument] = text;
        } else if (head[0] == "err") {
            runs.back().errors = text;
        } else if (head[0] == "file") {
            runs.back().left_files[argument] = text;
        } else if (head[0] == "nofile") {
            runs.back().left_files[argument] = std::nullopt;
        } else {
            return false;
        }
        return true;
    }

    std::vector<TCase> &cases_;
    TCaseRun shared_;
    TCaseRun next_;
};

}  // namespace

bool ReadCases(const std::filesystem::path &path, std::vector<TCase> &cases, std::string &mistake) {
    std::ifstream stream(path);
    CCaseReader reader(cases);
    for (const TSection &section : CutIntoSections(stream)) {
        if (!reader.Add(section)) {
            mistake = path.string() + ":" + std::to_string(section.line) + ": this section can't be understood";
            return false;
        }
    }
    const bool all_run = std::none_of(cases.begin(), cases.end(), [](const TCase &each) { return each.runs.empty(); });
    if (!reader.Complete() || !all_run) {
        mistake = path.string() + ": a case without a run, or files after the last run";
        return false;
    }
    return true;
}
