#pragma once

#include <string>
#include <vector>

#include "configurator/kq_cfg.h"

/// A value list on one line, much as a template writes it: 'Line' + number(1 to 16). UTF-8.
std::string ItemListText(const std::vector<kq_cfg::TItem> &items);
/// A channel group on one line: from %a% to %b%; real if %t% = 1. UTF-8.
std::string GroupText(const kq_cfg::TItem &group);
