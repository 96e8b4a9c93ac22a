#include "tools/print/channel_table.h"

#include <algorithm>

#include "platform/base/code_page.h"
#include "tools/print/text_table.h"

using kq_cfg::TChannel;

namespace {

/// What the definition leaves open.
std::string OpenText(const TChannel &channel) {
    if (channel.type_free && channel.direction_free) {
        return "type, direction";
    }
    return channel.type_free ? "type" : channel.direction_free ? "direction" : "";
}

std::vector<std::string> RowOf(const TChannel &channel) {
    std::string state = channel.defined ? "defined" : "not defined";
    const std::string open = OpenText(channel);
    if (!open.empty()) {
        state += ", open: " + open;
    }
    return {ChannelNumbers(channel), channel.type.value_or("undefined"), channel.direction.value_or("undefined"), state,
            kq_base::ToUtf8(channel.name)};
}

}  // namespace

std::string ChannelNumbers(const TChannel &channel) {
    const std::string first = std::to_string(channel.first);
    return channel.first == channel.last ? first : first + " - " + std::to_string(channel.last);
}

std::string ChannelTable(const std::vector<TChannel> &channels) {
    std::vector<std::vector<std::string>> rows = {{"CHANNELS", "TYPE", "DIRECTION", "STATE", "NAME"}};
    std::transform(channels.begin(), channels.end(), std::back_inserter(rows), RowOf);
    return TextTable(rows);
}
