#include "tools/session/script.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "configurator/kq_cfg.h"
#include "platform/base/code_page.h"
#include "platform/base/file_system_name.h"
#include "platform/base/number_text.h"
#include "tools/session/script_words.h"

const std::vector<std::string> kStateParts = {"window",   "menu",   "tools", "sheet", "channels",
                                              "messages", "editor", "text",  "dmf"};

namespace {

/// What a word may be.
enum class TKind : std::uint8_t {
    kText,
    kPath,
    kNumber,
    kSize,       ///< a length on the screen
    kValue,      ///< of a setting
    kTabNumber,  ///< 1 or 2
    kPlace,      ///< one word, or the word channels and one word
    kPointer,    ///< a JSON pointer; the rest of the line is a JSON value
    kLanguageCode,
    kAnswerWord,
    kSearching,
    kFound,
    kPart,
};

struct TForm {
    TScriptVerb verb;
    std::string_view name;
    std::string_view usage;
    std::vector<TKind> kinds;
    bool repeats = false;   ///< the last kind may come any number of times
    std::size_t least = 0;  ///< words of the last kind that are needed then
};

const std::vector<TForm> &Forms() {
    using enum TKind;
    using enum TScriptVerb;
    static const std::vector<TForm> forms = {
        {kAnswer, "answer", "yes|no|cancel ...", {kAnswerWord}, true, 1},
        {kLanguage, "language", "CZ|EN|GE|JP|NUMBER", {kLanguageCode}},
        {kModules, "modules", "DIR", {kPath}},
        {kWorkArea, "work-area", "WIDTH DEPTH", {kSize, kSize}},
        {kSetting, "setting", "PATH NAME VALUE", {kText, kText, kValue}},
        {kSettings, "settings", "", {}},
        {kFile, "file", "PATH", {kPath}},
        {kFail, "fail", "PATH TEXT", {kPath, kText}},
        {kFailLoad, "fail-load", "PATH TEXT", {kPath, kText}},
        {kWrite, "write", "PATH TEXT", {kPath, kText}},
        {kWhileSearching, "while-searching", "cancel|wait", {kSearching}},
        {kWhenFound, "when-found", "confirm KEY ...|close", {kFound, kNumber}, true},
        {kExpect, "expect", "POINTER JSON", {kPointer}},
        {kState, "state", "[PART ...]", {kPart}, true},
        {kOpen, "open", "MODULE PAR DMF", {kPath, kPath, kPath}},
        {kCreate, "create", "NAME MODULE PDT PAR DMF", {kText, kPath, kPath, kPath, kPath}},
        {kViewSettings, "view-settings", "", {}},
        {kQueryClose, "query-close", "", {}},
        {kCloseRequest, "close-request", "", {}},
        {kMenu, "menu", "TEXT", {kText}},
        {kTool, "tool", "TEXT", {kText}},
        {kTab, "tab", "1|2", {kTabNumber}},
        {kNextMessage, "next-message", "", {}},
        {kMessage, "message", "N", {kNumber}},
        {kSelect, "select", "PLACE", {kPlace}},
        {kEdit, "edit", "PLACE", {kPlace}},
        {kType, "type", "TEXT", {kText}},
        {kChoose, "choose", "N", {kNumber}},
        {kCommit, "commit", "", {}},
        {kCancel, "cancel", "", {}},
        {kSet, "set", "PLACE TEXT", {kPlace, kText}},
        {kReplace, "replace", "LINE COLUMN COUNT TEXT", {kNumber, kNumber, kNumber, kText}},
        {kUndo, "undo", "", {}},
        {kRedo, "redo", "", {}},
        {kFind, "find", "TEXT", {kText}},
        {kNextProblem, "next-problem", "", {}},
        {kTimer, "timer", "", {}},
    };
    return forms;
}

constexpr std::size_t kLongestPath = 259;
constexpr std::int64_t kLeastValue = INT32_MIN;

bool IsOneOf(const std::vector<std::string> &words, const std::string &word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool ParseNumber(const std::string &word, std::int64_t &number) {
    std::uint32_t parsed = 0;
    if (!kq_base::ParseDecimal(word, parsed)) {
        return false;
    }
    number = parsed;
    return true;
}

bool ParseValue(const std::string &word, std::int64_t &number) {
    if (!word.starts_with('-')) {
        return ParseNumber(word, number);
    }
    if (!ParseNumber(word.substr(1), number) || -number < kLeastValue) {
        return false;
    }
    number = -number;
    return true;
}

bool ParseLanguage(const std::string &word, std::int64_t &number) {
    const auto *const found = std::find(kq_cfg::kLanguages.begin(), kq_cfg::kLanguages.end(), word);
    number = found - kq_cfg::kLanguages.begin();
    return found != kq_cfg::kLanguages.end() || ParseNumber(word, number);
}

bool IsPointer(const std::string &word) {
    try {
        const nlohmann::json::json_pointer pointer(word);
    } catch (const nlohmann::json::exception &) {
        return false;
    }
    return true;
}

/// Takes one word for what it has to be, in UTF-8 so far. A reason if it can't be that.
std::string TakeArgument(TKind kind, const std::string &word, TScriptArgument &argument) {
    const auto require = [&word](bool right, std::string_view what) {
        return right ? std::string() : "\"" + word + "\" is " + std::string(what);
    };
    if (kind == TKind::kPath) {
        argument.text = kq_base::FromFileSystem(word);
        return require(!word.empty() && argument.text.size() <= kLongestPath, "no path of at most 259 characters");
    }
    if (kind == TKind::kPointer) {
        argument.text = word;
        return require(IsPointer(word), "no JSON pointer");
    }
    if (!kq_base::FromUtf8(word, argument.text)) {
        return "this isn't UTF-8, or holds a character that code page 1250 lacks";
    }
    switch (kind) {
        case TKind::kNumber:
            return require(ParseNumber(word, argument.number), "no number from 0 to 4294967295");
        case TKind::kSize:
            return require(ParseNumber(word, argument.number) && argument.number <= INT32_MAX,
                           "no number from 0 to 2147483647");
        case TKind::kValue:
            return require(ParseValue(word, argument.number), "no number from -2147483648 to 4294967295");
        case TKind::kTabNumber:
            return require(ParseNumber(word, argument.number) && (argument.number == 1 || argument.number == 2),
                           "no tab, which is 1 or 2");
        case TKind::kPlace:
            return require(
                ParsePlace(word, argument.place) && (!argument.place.channels || argument.place.rows.size() == 1),
                "no place such as 3:2 or 3.1:2, numbers from 1");
        case TKind::kLanguageCode:
            return require(ParseLanguage(word, argument.number), "no language: CZ, EN, GE, JP or a number");
        case TKind::kAnswerWord:
            return require(IsOneOf({"yes", "no", "cancel"}, word), "no answer: yes, no or cancel");
        case TKind::kSearching:
            return require(IsOneOf({"cancel", "wait"}, word), "neither cancel nor wait");
        case TKind::kFound:
            return require(IsOneOf({"confirm", "close"}, word), "neither confirm nor close");
        case TKind::kPart:
            return require(IsOneOf(kStateParts, word), "no part of the state");
        default:
            return {};
    }
}

/// Makes a command of one line.
class CLineParser {
public:
    CLineParser(std::string_view line, TScriptCommand &command) : line_(line), command_(command) {}

    /// A mistake if there is one.
    std::string Parse() {
        std::string name;
        if (!Next(name)) {
            return mistake_;
        }
        const auto form =
            std::find_if(Forms().begin(), Forms().end(), [&name](const TForm &each) { return each.name == name; });
        if (form == Forms().end()) {
            return "there is no command " + name;
        }
        command_.name = name;
        command_.verb = form->verb;
        std::string reason = TakeArguments(*form);
        if (!reason.empty()) {
            return reason;
        }
        return form->verb == TScriptVerb::kExpect ? TakeValue() : std::string();
    }

private:
    bool Next(std::string &word) { return TakeWord(line_, word, mistake_); }

    std::string Usage(const TForm &form) const {
        if (!mistake_.empty()) {
            return mistake_;
        }
        return "usage: " + std::string(form.name) + (form.usage.empty() ? "" : " ") + std::string(form.usage);
    }

    std::string TakeArguments(const TForm &form) {
        std::string word;
        for (std::size_t index = 0;; ++index) {
            const bool more = form.repeats ? !form.kinds.empty() : index < form.kinds.size();
            if (!more) {
                break;
            }
            const bool last = index + 1 >= form.kinds.size();
            if (!Next(word)) {
                const bool enough = form.repeats && last && index + 1 >= form.kinds.size() + form.least;
                return enough && mistake_.empty() ? std::string() : Usage(form);
            }
            std::string reason = Take(form, form.kinds[std::min(index, form.kinds.size() - 1)], word);
            if (!reason.empty()) {
                return reason;
            }
        }
        const bool value_follows = form.verb == TScriptVerb::kExpect;
        return value_follows || (!Next(word) && mistake_.empty()) ? std::string() : Usage(form);
    }

    std::string Take(const TForm &form, TKind kind, std::string &word) {
        TScriptArgument argument;
        if (kind == TKind::kPlace && word == "channels") {
            argument.place.channels = true;
            if (!Next(word)) {
                return Usage(form);
            }
        }
        const bool close = form.verb == TScriptVerb::kWhenFound && !command_.arguments.empty() &&
                           command_.arguments.front().text == "close";
        std::string reason = close ? Usage(form) : TakeArgument(kind, word, argument);
        command_.arguments.push_back(std::move(argument));
        return reason;
    }

    std::string TakeValue() {
        SkipBlanks(line_);
        command_.arguments.push_back({.text = std::string(line_), .number = 0, .place = {}});
        return nlohmann::json::accept(line_) ? "" : "what follows the pointer is no JSON value";
    }

    std::string_view line_;
    TScriptCommand &command_;
    std::string mistake_;
};

}  // namespace

std::vector<TScriptCommand> ParseScript(std::string_view text, std::vector<TScriptMistake> &mistakes) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    std::vector<TScriptCommand> commands;
    for (std::uint32_t number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        SkipBlanks(line);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        TScriptCommand &command = commands.emplace_back();
        command.line = number;
        std::string mistake = CLineParser(line, command).Parse();
        if (!mistake.empty()) {
            mistakes.push_back({number, std::move(mistake)});
        }
    }
    return commands;
}
