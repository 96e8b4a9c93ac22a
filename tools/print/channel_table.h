#pragma once

#include <string>
#include <vector>

#include "configurator/kq_cfg.h"

/// The numbers of a range: 5 or 5 - 8.
std::string ChannelNumbers(const kq_cfg::TChannel &channel);
/// The channels as a table for people, one range a line, in UTF-8.
std::string ChannelTable(const std::vector<kq_cfg::TChannel> &channels);
