#pragma once

#include "tools/arguments.h"
#include "tools/console/console.h"

/// The commands of the program. Each does its work and gives the exit code; what it writes to the console's output is
/// checked by the caller.
using TCommand = int (*)(const TArguments &arguments, TConsole &console);

int RunCheck(const TArguments &arguments, TConsole &console);
int RunFormat(const TArguments &arguments, TConsole &console);
int RunChannels(const TArguments &arguments, TConsole &console);
int RunDmf(const TArguments &arguments, TConsole &console);
int RunSet(const TArguments &arguments, TConsole &console);
int RunAdd(const TArguments &arguments, TConsole &console);
int RunRemove(const TArguments &arguments, TConsole &console);
int RunTemplate(const TArguments &arguments, TConsole &console);
int RunEval(const TArguments &arguments, TConsole &console);
int RunMatch(const TArguments &arguments, TConsole &console);
int RunScan(const TArguments &arguments, TConsole &console);
int RunTokens(const TArguments &arguments, TConsole &console);
int RunInspect(const TArguments &arguments, TConsole &console);
int RunSession(const TArguments &arguments, TConsole &console);
int RunDrive(const TArguments &arguments, TConsole &console);
