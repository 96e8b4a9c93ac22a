#pragma once

#include <string>
#include <vector>

/// What one run of the program left behind.
struct TRunResult {
    int exit_code = 0;
    std::string output;
    std::string errors;
};

/// Runs the program in this process.
TRunResult RunProgram(const std::vector<std::string> &arguments, const std::string &input = "");
