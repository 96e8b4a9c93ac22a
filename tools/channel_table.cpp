#include "tools/channel_table.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/base/code_page.h"

using kq_cfg::TChannel;

namespace {

constexpr std::size_t kAlignedColumns = 4;
using TRow = std::array<std::string, kAlignedColumns + 1>;

/// What the definition leaves open.
std::string OpenText(const TChannel &channel) {
    if (channel.type_free && channel.direction_free) {
        return "type, direction";
    }
    return channel.type_free ? "type" : channel.direction_free ? "direction" : "";
}

TRow RowOf(const TChannel &channel) {
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
    std::vector<TRow> rows = {{"CHANNELS", "TYPE", "DIRECTION", "STATE", "NAME"}};
    std::transform(channels.begin(), channels.end(), std::back_inserter(rows), RowOf);
    std::array<std::size_t, kAlignedColumns> widths{};
    for (const TRow &row : rows) {
        for (std::size_t column = 0; column < kAlignedColumns; ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    std::string table;
    for (const TRow &row : rows) {
        std::string line;
        for (std::size_t column = 0; column < kAlignedColumns; ++column) {
            line += row[column] + std::string(widths[column] + 2 - row[column].size(), ' ');
        }
        line += row[kAlignedColumns];
        line.erase(line.find_last_not_of(' ') + 1);
        table += line + "\n";
    }
    return table;
}
