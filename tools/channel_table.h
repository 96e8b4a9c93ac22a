#pragma once

#include <string>
#include <vector>

#include "configurator/kq_cfg.h"

/// The channels as a table for people, one range a line, in UTF-8.
std::string ChannelTable(const std::vector<kq_cfg::TChannel> &channels);
