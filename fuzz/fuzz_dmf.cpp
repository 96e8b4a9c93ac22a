/// Any text as a driver map, for both readers: the channel map's and the table's. What the table writes it reads again,
/// and what the channel map would take of a text isn't lost on its way through the table.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "driver/channels/channel_block_set.h"
#include "driver/channels/channel_range_table.h"
#include "driver/channels/dmf_map_reader.h"
#include "driver/channels/text_out.h"
#include "platform/view/text_view.h"

namespace {

using kq_drv::CChannelBlock;
using kq_drv::CChannelBlockSet;
using kq_pdt::CChannelRangeTable;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class CCountingOwner : public kq_pdt::CChannelRangeOwner {
public:
    void AddWarning(std::string_view /*text1*/, std::string_view /*text2*/, std::uint32_t /*position*/) override {
        ++warnings;
    }
    void AddError(std::string_view /*text1*/, std::string_view /*text2*/, std::uint32_t /*position*/) override {
        ++errors;
    }
    void ChannelsChanged() override {}
    void SelectChannelRow(std::uint32_t /*row*/) override {}

    std::uint32_t warnings = 0;
    std::uint32_t errors = 0;
};

std::string Rewrite(std::string_view text) {
    CChannelRangeTable table;
    table.LoadDmfText(text);
    CTextView view;
    CTextOut out(&view);
    table.WriteDmfText(out);
    return std::string(view.Text());
}

std::vector<std::string> SortedLines(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// Ranges whose bounds are the wrong way round are kept as they are written; they hold no channels.
bool HasReversedRange(const CChannelRangeTable &table) {
    kq_pdt::CChannelRange range;
    for (std::uint32_t row = 0; table.GetRow(row, range); ++row) {
        if (range.last < range.first) {
            return true;
        }
    }
    return false;
}

/// The written text is what the channel map takes too, with all the channels that it finds in the first text.
void ExpectNothingLost(std::string_view text, const std::string &written) {
    std::string error;
    CChannelBlockSet blocks;
    kq_drv::CDmfMapReader(text, blocks).Read(error);
    CChannelBlockSet written_blocks;
    Require(kq_drv::CDmfMapReader(written, written_blocks).Read(error));
    blocks.ForEach([&written_blocks](const CChannelBlock &block) {
        CChannelBlock found;
        Require(written_blocks.Find(block.first, found) && written_blocks.Find(block.Last(), found));
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    CCountingOwner owner;
    CChannelRangeTable table;
    table.SetOwner(&owner);
    table.LoadDmfText(text);
    const std::string once = Rewrite(text);
    const std::string twice = Rewrite(once);
    if (HasReversedRange(table)) {
        return 0;
    }
    // What was kept aside comes after the ranges, and the next reading may sort it in among them; then all stays.
    Require(SortedLines(once) == SortedLines(twice));
    Require(Rewrite(twice) == twice);
    if (owner.warnings + owner.errors == 0) {
        ExpectNothingLost(text, once);
    }
    return 0;
}
