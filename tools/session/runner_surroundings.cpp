#include "platform/base/file_system_name.h"
#include "platform/base/save_file.h"
#include "tools/session/runner.h"
#include "tools/session/session_state.h"

namespace {

constexpr std::string_view kColumnSettings = "\\driver config tool\\Sheet";

TBoxAnswer AnswerOf(std::string_view word) {
    if (word == "yes") {
        return TBoxAnswer::kYes;
    }
    return word == "no" ? TBoxAnswer::kNo : TBoxAnswer::kCancel;
}

std::vector<std::uint32_t> KeysOf(const TScriptCommand &command) {
    std::vector<std::uint32_t> keys;
    for (std::size_t index = 1; index < command.arguments.size(); ++index) {
        keys.push_back(static_cast<std::uint32_t>(command.arguments[index].number));
    }
    return keys;
}

}  // namespace

TRefusal CSessionRunner::CarryOutAround(const TScriptCommand &command) {
    using enum TScriptVerb;
    switch (command.verb) {
        case kSettings:
            ShowSettings();
            return {};
        case kFile:
            return ShowFile(command.arguments.at(0).text);
        case kWrite:
            return Write(command.arguments.at(0).text, command.arguments.at(1).text);
        case kExpect:
            return Expect(command);
        case kState:
            ShowState(command);
            return {};
        default:
            SetSurroundings(command);
            return {};
    }
}

void CSessionRunner::SetSurroundings(const TScriptCommand &command) {
    using enum TScriptVerb;
    const auto text = [&command](std::size_t index) -> const std::string & { return command.arguments.at(index).text; };
    const auto number = [&command](std::size_t index) { return command.arguments.at(index).number; };
    switch (command.verb) {
        case kAnswer:
            for (const TScriptArgument &argument : command.arguments) {
                surroundings_.QueueAnswer(AnswerOf(argument.text));
            }
            return;
        case kLanguage:
            surroundings_.Host().SetLanguage(static_cast<std::uint32_t>(number(0)));
            return;
        case kModules:
            surroundings_.Host().SetModules(text(0));
            return;
        case kWorkArea:
            SetWorkArea(static_cast<std::int32_t>(number(0)), static_cast<std::int32_t>(number(1)));
            return;
        case kSetting:
            surroundings_.Settings().Write(text(0), text(1), number(2));
            return;
        case kFail:
            surroundings_.Disk().FailSaves(text(0), text(1));
            return;
        case kFailLoad:
            surroundings_.Disk().FailLoads(text(0), text(1));
            return;
        case kWhileSearching:
            person_.CancelSearches(text(0) == "cancel");
            return;
        default:
            if (text(0) == "confirm") {
                person_.ConfirmItems(KeysOf(command));
            } else {
                person_.CloseResults();
            }
    }
}

void CSessionRunner::ShowSettings() {
    TJson settings = TJson::object();
    const std::string below_columns = std::string(kColumnSettings) + "\\";
    for (const auto &[path, values] : surroundings_.Settings().Paths()) {
        if (path == kColumnSettings || path.starts_with(below_columns)) {
            continue;
        }
        TJson &named = settings[TextJson(path).get<std::string>()] = TJson::object();
        for (const auto &[name, value] : values) {
            named[TextJson(name).get<std::string>()] = value;
        }
    }
    answer_.given["settings"] = std::move(settings);
}

TRefusal CSessionRunner::ShowFile(const std::string &path) {
    std::string content;
    std::string reason;
    kq_base::CDisk &disk = surroundings_.Disk().Behind();
    const bool read = disk.Read(path, content, reason);
    answer_.given["text"] = read ? TextJson(content) : TJson(nullptr);
    return read || !disk.Exists(path) ? TRefusal() : "the file can't be read";
}

TRefusal CSessionRunner::Write(const std::string &path, const std::string &text) {
    std::string reason;
    const bool written = surroundings_.Disk().Behind().Save(path, text, reason);
    return written ? TRefusal() : "the file can't be written";
}

TRefusal CSessionRunner::Expect(const TScriptCommand &command) {
    const nlohmann::json::json_pointer pointer(command.arguments.at(0).text);
    std::vector<std::string> parts;
    if (!pointer.empty()) {
        nlohmann::json::json_pointer first = pointer;
        while (!first.parent_pointer().empty()) {
            first.pop_back();
        }
        parts.push_back(first.back());
    }
    const nlohmann::json state = SessionState(window_, parts);
    nlohmann::json found;
    try {
        found = state.contains(pointer) ? state.at(pointer) : nlohmann::json();
    } catch (const nlohmann::json::exception &) {
        found = nullptr;  // a number that no array can have names nothing either
    }
    answer_.given["found"] = TJson(found);
    return found == nlohmann::json::parse(command.arguments.at(1).text) ? TRefusal() : "the value is another one";
}

void CSessionRunner::ShowState(const TScriptCommand &command) {
    std::vector<std::string> parts;
    for (const TScriptArgument &argument : command.arguments) {
        parts.push_back(argument.text);
    }
    answer_.given["state"] = SessionState(window_, parts);
}
