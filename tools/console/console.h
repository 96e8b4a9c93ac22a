#pragma once

#include <istream>
#include <ostream>

#include "tools/console/output.h"

/// Where one run of the program reads and writes beside its files.
struct TConsole {
    std::istream &in;
    COutput out;
    std::ostream &err;
    bool colour = false;    ///< err shows colours
    bool terminal = false;  ///< err is a terminal, so passing things such as progress may be shown there
};

/// What the program returns.
inline constexpr int kDone = 0;         ///< done, no error found
inline constexpr int kInputErrors = 1;  ///< the input has errors
inline constexpr int kFailed = 2;       ///< wrong usage, or something can't be read or written
