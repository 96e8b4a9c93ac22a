#pragma once

#include <string>
#include <vector>

#include "tools/console/console.h"

/// The whole program kqcfg: does what the arguments say (without the program's name) and gives the exit code: kDone,
/// kInputErrors or kFailed.
int RunKqcfg(const std::vector<std::string> &arguments, TConsole &console);
