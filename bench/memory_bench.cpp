/// What the model holds in memory for a template's items and for the values of a parameter file.

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <string>

#include "bench/support/count_memory.h"
#include "bench/support/texts.h"
#include "model/sheet_data.h"

namespace {

void Report(benchmark::State &state, const char *name, const kq_bench::CMemoryMeter &meter, int count) {
    state.counters[name] = static_cast<double>(meter.Bytes()) / count;
}

void TemplateItems(benchmark::State &state) {
    const kq_bench::TTemplateSize size{.sections = static_cast<int>(state.range(0))};
    const std::string text = kq_bench::PdtText(size);
    for (auto _ : state) {
        kq_pdt::CParSheetData data;
        kq_pdt::TCompileResult result;
        const kq_bench::CMemoryMeter meter;
        data.LoadTemplateText(text, result);
        Report(state, "bytes_per_item", meter, kq_bench::ItemCount(size));
        data.Done();
    }
}

/// The same content as a JSON document.
void JsonItems(benchmark::State &state) {
    const kq_bench::TTemplateSize size{.sections = static_cast<int>(state.range(0))};
    const std::string text = kq_bench::TemplateAsJson(size);
    for (auto _ : state) {
        const kq_bench::CMemoryMeter meter;
        rapidjson::Document document;
        document.Parse(text.data(), text.size());
        Report(state, "bytes_per_item", meter, kq_bench::ItemCount(size));
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
        Report(state, "bytes_per_value", meter, keys * 4);
        data.Done();
    }
}

BENCHMARK(TemplateItems)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(JsonItems)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(ParValues)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
