#include <algorithm>

#include "driver/channels/channel_range_note.h"
#include "driver/channels/channel_range_table.h"
#include "driver/channels/dmf_map_reader.h"
#include "driver/channels/dmf_table_reader.h"
#include "driver/channels/dmf_words.h"
#include "driver/channels/text_out.h"
#include "driver/channels/texts.h"
#include "platform/base/text_buffer.h"
#include "platform/view/text_view.h"

namespace kq_pdt {

namespace texts = kq_drv::texts;

namespace {

void WriteEntry(CTextOut &out, std::uint32_t first, std::uint32_t last, std::string_view type,
                std::string_view direction) {
    kq_base::CTextBuffer line;
    line.Append("  ");
    line.AppendDecimal(first);
    if (first != last) {
        line.Append(" - ");
        line.AppendDecimal(last);
    }
    line.Append(" ");
    line.Append(type);
    line.Append(" ");
    line.Append(direction);
    out.WriteLine(line.View());
}

}  // namespace

bool CChannelRangeTable::LoadDmfText(const CTextView &view) { return LoadDmfText(view.Text()); }

bool CChannelRangeTable::LoadDmfText(std::string_view text) {
    Clear();
    CDmfTableReader reader(text);
    CDmfTableReader::TEntry entry;
    while (reader.Next(entry)) {
        store_.Insert({entry.first, entry.last, entry.type, entry.direction, 0});
    }
    std::string error;  // nothing is reported about syntax
    if (reader.OtherBeginLine() != 0) {
        kq_drv::CDmfMapReader(text, store_.Aside()).Read(error);
        store_.SetDmfStopLine(store_.Aside().IsEmpty() ? 0 : reader.OtherBeginLine());
    }
    if (reader.Stopped()) {
        kq_drv::CDmfMapReader(text, store_.Aside()).ReadFrom(reader.StopPosition(), error);
        store_.SetDmfStopLine(DmfStopLine() != 0 ? DmfStopLine() : reader.StopLine());
    }
    CheckOverlaps();
    return true;
}

void CChannelRangeTable::WriteDmfText(CTextOut &out) const {
    if (!out.IsAttached()) {
        return;
    }
    out.WriteLine("begin");
    const TRows unsettled = UnsettledRows();
    auto settled = unsettled.begin();
    std::uint32_t row = 0;
    for (CPosition position = Ranges().Begin(); !Ranges().IsEnd(position); Ranges().Next(position), ++row) {
        TRecord range = Ranges().At(position);
        if (settled != unsettled.end() && settled->first == row) {
            range = (settled++)->second;
        }
        if (IsChannelType(range.type) && IsDirection(range.direction)) {
            WriteEntry(out, range.first, range.last, KeywordText(range.type), KeywordText(range.direction));
        }
    }
    WriteAside(out);
    out.WriteLine("end.");
}

/// Writes what was kept aside, each channel once and none that the table holds. Both lists are walked side by side: all
/// ranges that start up to `at` have been passed, and together they hold the channels from `at` up to but not including
/// `held`.
void CChannelRangeTable::WriteAside(CTextOut &out) const {
    CPosition position = Ranges().Begin();
    std::uint64_t held = 0;
    std::uint64_t at = 0;
    store_.Aside().ForEach([&](const kq_drv::CChannelBlock &block) {
        const std::uint64_t end = std::uint64_t{block.Last()} + 1;
        at = std::max<std::uint64_t>(at, block.first);
        while (at < end) {
            for (; !Ranges().IsEnd(position) && Ranges().FirstAt(position) <= at; Ranges().Next(position)) {
                held = std::max(held, std::uint64_t{Ranges().LastAt(position)} + 1);
            }
            if (held > at) {
                at = held;
                continue;
            }
            const std::uint64_t next = Ranges().IsEnd(position) ? end : Ranges().FirstAt(position);
            const std::uint64_t stop = std::min(end, next);
            WriteEntry(out, static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(stop - 1),
                       kq_drv::TypeWord(block.type), kq_drv::DirectionWord(block.direction));
            at = stop;
        }
    });
}

bool CChannelRangeTable::SaveDmf(std::string_view path, std::string &error) const {
    CTextView view;
    CTextOut out(&view);
    WriteDmfText(out);
    return view.SaveToFile(path, error);
}

void CChannelRangeTable::CheckOverlaps() {
    CPosition lower = Ranges().Begin();
    CPosition upper = lower;
    for (; !Ranges().IsEnd(upper); Ranges().Next(lower)) {
        Ranges().Next(upper);
        if (Ranges().IsEnd(upper) || Ranges().FirstAt(upper) > Ranges().LastAt(lower)) {
            continue;
        }
        const bool alike = ReportOverlap(Ranges().At(lower), Ranges().At(upper));
        const std::uint32_t start = Ranges().FirstAt(upper);
        // Below 0 there is no number at which the lower one could end: then it stays as it is.
        if (!alike && start > 0) {
            store_.SetLast(lower, start - 1);
        }
    }
    Changed();
}

/// Reports that two neighbours overlap; true if they are of one kind, so that both may stay.
bool CChannelRangeTable::ReportOverlap(const TRecord &lower, const TRecord &upper) const {
    kq_base::CTextBuffer text;
    text.AppendDecimal(upper.first);
    text.Append(" - ");
    text.AppendDecimal(lower.last);
    const bool alike = lower.type == upper.type && lower.direction == upper.direction;
    if (alike) {
        ReportWarning(texts::kMapRepeats, text.View());
    } else {
        text.Append(texts::kMapDiffers);
        ReportError(texts::kMapOverlaps, text.View());
    }
    return alike;
}

}  // namespace kq_pdt
