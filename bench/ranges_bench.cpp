/// The table of channel ranges beside an interval map of the kind that libraries offer: laying definitions into an
/// empty table, laying them into the middle of ranges that are there (each splits one in three), looking channels up
/// and going through all rows. Everything comes in random order. Edits of single ranges have no peer: a change alone,
/// in a transaction that is committed, and in one that is rolled back.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <boost/icl/interval_map.hpp>
#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

#include "bench/support/count_memory.h"
#include "driver/channels/channel_range_table.h"
#include "driver/channels/channel_transaction.h"

namespace {

using kq_pdt::CChannelRange;
using kq_pdt::CChannelRangeTable;
using kq_pdt::CChannelTransaction;
using kq_pdt::kUndefinedCode;
using kq_pdt::kwChTo;
using kq_pdt::kwInput;
using kq_pdt::kwReal;

constexpr std::uint32_t kStride = 10;  // channels from the start of one range to the start of the next

using CIntervalMap = boost::icl::interval_map<std::uint32_t, std::uint32_t, boost::icl::partial_enricher>;
using CInterval = CIntervalMap::interval_type;

CInterval Closed(std::uint32_t first, std::uint32_t last) { return CInterval::right_open(first, last + 1); }

/// The numbers below count in random order, always the same one.
std::vector<std::uint32_t> Shuffled(std::uint32_t count) {
    std::vector<std::uint32_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    return numbers;
}

std::uint32_t Count(const benchmark::State &state) { return static_cast<std::uint32_t>(state.range(0)); }

void CountItems(benchmark::State &state) { state.SetItemsProcessed(state.iterations() * state.range(0)); }

/// Our table.
struct TOurs {
    CChannelRangeTable table;

    void LayWhole(std::uint32_t range) {
        table.AddDefinedUnnamed(range * kStride, range * kStride + 8, kwReal, kwInput);
    }
    void LayMiddle(std::uint32_t range) {
        table.AddDefinedUnnamed(range * kStride + 3, range * kStride + 5, kUndefinedCode, kUndefinedCode);
    }
    /// Ranges that are there but not defined, as a driver map brings them.
    void Reserve(std::uint32_t count) {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        for (std::uint32_t range = 0; range < count; ++range) {
            table.AppendRange(kwReal, kwInput, first, last, false, kStride);
        }
    }
    std::uint64_t Find(std::uint32_t channel) const {
        CChannelRange range;
        return table.FindContaining(channel, range) ? range.first : 0;
    }
    bool AllRows() const { return table.HasUndefined(); }
    std::uint64_t Rows() const {
        std::uint64_t sum = 0;
        CChannelRange range;
        for (std::uint32_t row = 0; table.GetRow(row, range); ++row) {
            sum += range.first + range.type;
        }
        return sum;
    }
};

/// The interval map. Values differ from range to range, so that it joins no neighbours.
struct TPeer {
    CIntervalMap map;

    void LayWhole(std::uint32_t range) { map.set({Closed(range * kStride, range * kStride + 8), range + 1}); }
    void LayMiddle(std::uint32_t range) { map.set({Closed(range * kStride + 3, range * kStride + 5), ~range}); }
    void Reserve(std::uint32_t count) {
        for (std::uint32_t range = 0; range < count; ++range) {
            map.set({Closed(range * kStride, range * kStride + 9), range + 1});
        }
    }
    std::uint64_t Find(std::uint32_t channel) const {
        const auto found = map.find(channel);
        return found != map.end() ? found->first.lower() : 0;
    }
    bool AllRows() const {
        return std::any_of(map.begin(), map.end(), [](const auto &range) { return range.second == kUndefinedCode; });
    }
    std::uint64_t Rows() const {
        std::uint64_t sum = 0;
        for (const auto &[interval, value] : map) {
            sum += interval.lower() + value;
        }
        return sum;
    }
};

template <class TTable>
void Lay(benchmark::State &state) {
    const std::vector<std::uint32_t> order = Shuffled(Count(state));
    for (auto _ : state) {
        const kq_bench::CMemoryMeter meter;
        TTable ranges;
        for (const std::uint32_t range : order) {
            ranges.LayWhole(range);
        }
        state.counters["bytes_per_range"] = static_cast<double>(meter.Bytes()) / static_cast<double>(order.size());
    }
    CountItems(state);
}

template <class TTable>
void Split(benchmark::State &state) {
    const std::vector<std::uint32_t> order = Shuffled(Count(state));
    for (auto _ : state) {
        state.PauseTiming();
        {
            const kq_bench::CMemoryMeter meter;
            TTable ranges;
            ranges.Reserve(Count(state));
            state.ResumeTiming();
            for (const std::uint32_t range : order) {
                ranges.LayMiddle(range);
            }
            state.PauseTiming();
            state.counters["bytes_per_range"] =
                static_cast<double>(meter.Bytes()) / static_cast<double>(order.size() * 3);
        }
        state.ResumeTiming();
    }
    CountItems(state);
}

template <class TTable>
TTable Laid(std::uint32_t count) {
    TTable ranges;
    for (const std::uint32_t range : Shuffled(count)) {
        ranges.LayWhole(range);
    }
    return ranges;
}

template <class TTable>
void Find(benchmark::State &state) {
    const TTable ranges = Laid<TTable>(Count(state));
    const std::vector<std::uint32_t> channels = Shuffled(Count(state) * kStride);
    std::size_t at = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ranges.Find(channels[at]));
        at = at + 1 < channels.size() ? at + 1 : 0;
    }
    state.SetItemsProcessed(state.iterations());
}

/// Whether something in a range isn't known, asked of all ranges.
template <class TTable>
void AllRows(benchmark::State &state) {
    const TTable ranges = Laid<TTable>(Count(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(ranges.AllRows());
    }
    CountItems(state);
}

/// All ranges, one row after the other, with all that is known about them.
template <class TTable>
void Rows(benchmark::State &state) {
    const TTable ranges = Laid<TTable>(Count(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(ranges.Rows());
    }
    CountItems(state);
}

bool ChangeLast(CChannelRangeTable &table, std::uint32_t range, std::uint32_t old_last, std::uint32_t last) {
    const std::uint32_t first = range * kStride;
    return table.ChangeParameter(first, kwChTo, TParValue::Number(first + old_last), TParValue::Number(first + last));
}

enum class TEnd : std::uint8_t { kNone, kCommit, kRollBack };

/// Changes the last channel of one range after the other by one. Edits that stay are undone by a second one.
template <TEnd kEnd>
void Edit(benchmark::State &state) {
    TOurs ours = Laid<TOurs>(Count(state));
    const std::vector<std::uint32_t> order = Shuffled(Count(state));
    std::size_t at = 0;
    std::uint32_t last = 8;
    bool changed = true;
    for (auto _ : state) {
        if constexpr (kEnd == TEnd::kNone) {
            changed &= ChangeLast(ours.table, order[at], last, 17 - last);
        } else {
            CChannelTransaction transaction(ours.table);
            changed &= ChangeLast(ours.table, order[at], last, 17 - last);
            kEnd == TEnd::kCommit ? transaction.Commit() : transaction.RollBack();
        }
        if (++at == order.size()) {
            at = 0;
            last = kEnd == TEnd::kRollBack ? last : 17 - last;
        }
    }
    if (!changed) {
        state.SkipWithError("a change was refused");
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK_TEMPLATE(Edit, TEnd::kNone)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(Edit, TEnd::kCommit)->Arg(1000)->Arg(100000);
BENCHMARK_TEMPLATE(Edit, TEnd::kRollBack)->Arg(1000)->Arg(100000);

#define KQ_BESIDE(work)                                      \
    BENCHMARK_TEMPLATE(work, TOurs)->Arg(1000)->Arg(100000); \
    BENCHMARK_TEMPLATE(work, TPeer)->Arg(1000)->Arg(100000)

KQ_BESIDE(Lay);
KQ_BESIDE(Split);
KQ_BESIDE(Find);
KQ_BESIDE(AllRows);
KQ_BESIDE(Rows);

}  // namespace
