#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// The cases of tests/cases, as its README.md describes them.

/// A file's name and its bytes.
using TCaseFiles = std::map<std::string, std::string>;

/// One command of a `--- session`, with what has to come of it.
struct TSessionStep {
    std::string command;
    bool refused = false;
    std::optional<std::vector<std::string>> events;  ///< each JSON; without a value they aren't compared
    std::string given;                               ///< a JSON object: these members the answer has; or empty
};

/// One `--- run` or `--- session` with what has to come out of it. Expected texts are UTF-8 with plain line ends.
struct TCaseRun {
    int line = 0;  ///< in the case file
    TCaseFiles files;
    std::vector<std::string> arguments;
    std::string input;
    std::map<std::uint32_t, TSessionStep> steps;  ///< of a session, by the lines of the script, which is the input
    int exit_code = 0;
    std::map<std::string, std::string> outputs;  ///< by JSON pointer; "" is the whole output
    std::optional<std::string> errors;
    std::map<std::string, std::optional<std::string>> left_files;  ///< none: there must be no such file
};

struct TCase {
    std::string title;
    std::vector<TCaseRun> runs;
};

/// Reads a file of cases. A mistake in it is given with its position and ends the reading.
bool ReadCases(const std::filesystem::path &path, std::vector<TCase> &cases, std::string &mistake);
