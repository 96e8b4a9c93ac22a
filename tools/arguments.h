#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The languages that a host can have, in the order of their numbers.
inline constexpr std::array<std::string_view, 4> kLanguages = {"CZ", "EN", "GE", "JP"};

/// The command line of one run, as the commands see it. Names of files and directories are as typed; `-` is standard
/// input. Texts are still UTF-8.
struct TArguments {
    std::string pdt;
    std::string par;  ///< also the one file of scan and tokens
    std::optional<std::string> dmf;
    std::optional<std::string> language;  ///< one of kLanguages
    std::optional<std::string> modules;
    std::optional<std::string> output;
    bool json = false;
    bool check = false;                  ///< format --check
    bool raw = false;                    ///< tokens --raw
    std::string expression;              ///< of eval; the value list of match
    std::string text;                    ///< of match
    std::vector<std::string> variables;  ///< each NAME=VALUE
};
