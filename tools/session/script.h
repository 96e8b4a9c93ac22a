#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/session/place.h"

/// The script of a session: one command a line, a word and its arguments.

enum class TScriptVerb : std::uint8_t {
    // What surrounds the window.
    kAnswer,
    kLanguage,
    kModules,
    kWorkArea,
    kSetting,
    kSettings,
    kFile,
    kFail,
    kFailLoad,
    kWrite,
    kWhileSearching,
    kWhenFound,
    kExpect,
    kState,
    // The window comes and goes.
    kOpen,
    kCreate,
    kViewSettings,
    kQueryClose,
    kCloseRequest,
    // The window.
    kMenu,
    kTool,
    kTab,
    kNextMessage,
    kMessage,
    kSelect,
    kEdit,
    kType,
    kChoose,
    kCommit,
    kCancel,
    kSet,
    kReplace,
    kUndo,
    kRedo,
    kFind,
    kNextProblem,
    kTimer,
};

/// One argument: its text, in code page 1250 (pointer and JSON value of expect in UTF-8), and what it means where it
/// isn't just a text.
struct TScriptArgument {
    std::string text;
    std::int64_t number = 0;
    TPlace place;
};

struct TScriptCommand {
    std::uint32_t line = 0;
    std::string name;
    TScriptVerb verb = TScriptVerb::kState;
    std::vector<TScriptArgument> arguments;
};

struct TScriptMistake {
    std::uint32_t line = 0;
    std::string text;  ///< UTF-8
};

/// The parts of a session's state, in the order in which they are given.
extern const std::vector<std::string> kStateParts;

/// Takes a script, in UTF-8. The commands are complete only if there is no mistake.
std::vector<TScriptCommand> ParseScript(std::string_view text, std::vector<TScriptMistake> &mistakes);
