/// What the model holds in memory, and how many blocks were allocated to build it, for a template's items and for the
/// values of a parameter file. Apart from the measurements of time, since counting takes time.

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <string>

#include "bench/support/count_memory.h"
#include "bench/support/texts.h"
#include "model/sheet_data.h"

namespace {

void Report(benchmark::State &state, const kq_bench::CMemoryMeter &meter, int count, const char *bytes,
            const char *allocations) {
    state.counters[bytes] = static_cast<double>(meter.Bytes()) / count;
    state.counters[allocations] = static_cast<double>(meter.Allocations()) / count;
}

void TemplateItems(benchmark::State &state) {
    const kq_bench::TTemplateSize size{.sections = static_cast<int>(state.range(0))};
    const std::string text = kq_bench::PdtText(size);
    for (auto _ : state) {
        kq_pdt::CParSheetData data;
        kq_pdt::TCompileResult result;
        const kq_bench::CMemoryMeter meter;
        data.LoadTemplateText(text, result);
        Report(state, meter, kq_bench::ItemCount(size), "bytes_per_item", "allocations_per_item");
        data.Done();
    }
}

/// The same content as a JSON document. Its pool takes its blocks with malloc, so it is asked itself.
void JsonItems(benchmark::State &state) {
    const kq_bench::TTemplateSize size{.sections = static_cast<int>(state.range(0))};
    const std::string text = kq_bench::TemplateAsJson(size);
    for (auto _ : state) {
        rapidjson::Document document;
        document.Parse(text.data(), text.size());
        state.counters["bytes_per_item"] =
            static_cast<double>(document.GetAllocator().Capacity()) / kq_bench::ItemCount(size);
    }
}

void ParValues(benchmark::State &state) {
    const int keys = static_cast<int>(state.range(0));
    const std::string text = kq_bench::ParTextOfKeys(keys);
    for (auto _ : state) {
        kq_pdt::CParSheetData data;
        kq_pdt::TCompileResult result;
        data.LoadTemplateText(kq_bench::PdtTextOfKeys(), result);
        const kq_bench::CMemoryMeter meter;
        data.ReadPar(text);
        Report(state, meter, keys * 4, "bytes_per_value", "allocations_per_value");
        data.Done();
    }
}

BENCHMARK(TemplateItems)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(JsonItems)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(ParValues)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
