#pragma once

#include "configurator/kq_cfg.h"
#include "tools/arguments.h"
#include "tools/console/console.h"

/// The host that the command line describes. If the directory of modules can't be used, the reason is printed
/// and the result is false.
bool MakeHostOptions(const TArguments &arguments, TConsole &console, kq_cfg::TOptions &options);
