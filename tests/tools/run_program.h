#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "tools/console/console.h"

/// A console over texts in memory.
struct TTextConsole {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    TConsole console{in, COutput(out), err};
};

/// The result of one run of the program.
struct TRunResult {
    int exit_code = 0;
    std::string output;
    std::string errors;
};

/// Runs the program in this process.
TRunResult RunProgram(const std::vector<std::string> &arguments, const std::string &input = "");
