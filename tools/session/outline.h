#pragma once

#include <string>

#include "tools/print/json_text.h"
#include "tools/session/script.h"

/// What state, file and settings give, for people; empty for all other commands.
std::string Outline(TScriptVerb verb, const TJson &given);
