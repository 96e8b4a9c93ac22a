#pragma once

#include "configurator/kq_cfg.h"
#include "tools/arguments.h"
#include "tools/console/console.h"

/// The host that the command line describes. False, with the reason told on the console, if the directory of modules
/// can't be used.
bool MakeHostOptions(const TArguments &arguments, TConsole &console, kq_cfg::TOptions &options);
