#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What drive is to do with a driver module.
struct TDriveArguments {
    std::optional<std::string> name;  ///< of the driver; else the module's
    std::uint32_t instance = 0;
    std::vector<std::string> reads;   ///< each CHANNEL:TYPE
    std::vector<std::string> writes;  ///< each CHANNEL:TYPE=VALUE
    std::uint32_t rounds = 1;         ///< 0 for no end
    std::uint32_t interval = 1000;    ///< milliseconds from the beginning of a round to that of the next
};

/// The command line of one run, as the commands see it. Names of files and directories are as typed; `-` is standard
/// input. Texts are still UTF-8.
struct TArguments {
    std::string pdt;
    std::string par;  ///< also the one file of scan and tokens
    std::optional<std::string> dmf;
    std::optional<std::string> language;  ///< one of kq_cfg::kLanguages
    std::optional<std::string> modules;
    std::optional<std::string> output;
    std::optional<std::string> dmf_output;
    std::vector<std::string> edits;  ///< of set, each PLACE=VALUE; places of add and remove
    bool json = false;
    bool check = false;                  ///< format --check
    bool raw = false;                    ///< tokens --raw
    std::string expression;              ///< of eval; the value list of match
    std::string text;                    ///< of match
    std::vector<std::string> variables;  ///< each NAME=VALUE
    std::string module;                  ///< of inspect and drive
    std::string script;                  ///< of session
    TDriveArguments drive;
};
