/// The compile of a template of 41,000 items beside two readers that build trees from the same content: a JSON document
/// and a libconfig file. One round is the reading from a text in memory, until the result is released again.

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <libconfig.h++>
#include <string>

#include "bench/support/texts.h"
#include "model/sheet_data.h"

namespace {

using kq_bench::TTemplateSize;

/// The argument is how many sections there are.
TTemplateSize Size(const benchmark::State &state) { return {.sections = static_cast<int>(state.range(0))}; }

void Count(benchmark::State &state, const std::string &text) {
    const TTemplateSize size = Size(state);
    state.SetItemsProcessed(state.iterations() * kq_bench::ItemCount(size));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void CompileTemplate(benchmark::State &state) {
    const std::string text = kq_bench::PdtText(Size(state));
    for (auto _ : state) {
        kq_pdt::CParSheetData data;
        kq_pdt::TCompileResult result;
        if (!data.LoadTemplateText(text, result)) {
            state.SkipWithError("the template doesn't compile");
        }
        data.Done();
    }
    Count(state, text);
}

void ParseJson(benchmark::State &state) {
    const std::string text = kq_bench::TemplateAsJson(Size(state));
    for (auto _ : state) {
        rapidjson::Document document;
        document.Parse(text.data(), text.size());
        if (document.HasParseError()) {
            state.SkipWithError("the JSON can't be read");
        }
        benchmark::DoNotOptimize(document);
    }
    Count(state, text);
}

void ParseLibconfig(benchmark::State &state) {
    const std::string text = kq_bench::TemplateAsLibconfig(Size(state));
    for (auto _ : state) {
        libconfig::Config config;
        config.readString(text);
        benchmark::DoNotOptimize(config);
    }
    Count(state, text);
}

BENCHMARK(CompileTemplate)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseJson)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseLibconfig)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
