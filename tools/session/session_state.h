#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "configurator/kq_pdt.h"
#include "tools/print/json_text.h"

/// What a person sees of a session, as JSON: the named parts, all of them if none is named, in the order of
/// kStateParts. Without a window only that there is none.
TJson SessionState(CConfiguratorWindow *window, const std::vector<std::string> &parts);

/// A text, or null for an empty one.
inline TJson TextOrNullIfEmpty(std::string_view text) { return text.empty() ? TJson(nullptr) : TextJson(text); }
