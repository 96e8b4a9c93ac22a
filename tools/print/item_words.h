#pragma once

#include <string_view>

#include "configurator/kq_cfg.h"

/// The word for a kind of item, in JSON as for people.
std::string_view ItemKindWord(kq_cfg::TItemKind kind);
