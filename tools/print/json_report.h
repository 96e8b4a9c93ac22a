#pragma once

#include <vector>

#include "configurator/kq_cfg.h"
#include "tools/print/json_text.h"

/// {"template", "messages", "errors", "warnings", "boxes"}: what a translation said.
TJson ReportJson(const kq_cfg::TReport &report);
TJson MessagesJson(const std::vector<kq_cfg::TMessage> &messages);
TJson ChannelsJson(const std::vector<kq_cfg::TChannel> &channels);
