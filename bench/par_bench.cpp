/// Reading a parameter file of many keys with 4 values each into the model, and writing it out again. The argument is
/// the number of keys. Time a value should stay the same however many there are. The same with stations of the modbus
/// example, which define channels; there the argument is the number of stations.

#include <benchmark/benchmark.h>

#include <string>

#include "bench/support/modbus_text.h"
#include "bench/support/texts.h"
#include "driver/channels/text_out.h"
#include "model/sheet_data.h"
#include "platform/view/text_view.h"

namespace {

constexpr std::int64_t kValuesOfKey = 4;

/// A model with the template and, if wanted, the instances of the parameter file.
class CModel {
public:
    explicit CModel(const std::string &text = kq_bench::PdtTextOfKeys()) {
        kq_pdt::TCompileResult result;
        good_ = data_.LoadTemplateText(text, result);
    }
    ~CModel() { data_.Done(); }
    CModel(const CModel &) = delete;
    CModel &operator=(const CModel &) = delete;

    void Read(const std::string &text) { data_.ReadPar(text); }
    void Forget() { data_.ClearInstances(); }
    std::string Written() {
        CTextView view;
        CTextOut out(&view);
        data_.WriteParText(out);
        return std::string(view.Text());
    }
    /// True if the template compiled and all keys of the text were read.
    bool Holds(std::int64_t keys) const {
        std::size_t found = 0;
        for (const auto &section : data_.Instances().List()) {
            found += section->Keys().size();
        }
        return good_ && found == static_cast<std::size_t>(keys);
    }

private:
    kq_pdt::CParSheetData data_;
    bool good_ = false;
};

void Check(benchmark::State &state, const CModel &model) {
    if (!model.Holds(state.range(0))) {
        state.SkipWithError("not all keys were read");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * kValuesOfKey);
}

/// Each reading begins with nothing and ends with the whole model; releasing it isn't measured here.
void ReadPar(benchmark::State &state) {
    const std::string text = kq_bench::ParTextOfKeys(static_cast<int>(state.range(0)));
    CModel model;
    for (auto _ : state) {
        model.Read(text);
        state.PauseTiming();
        Check(state, model);
        model.Forget();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * kValuesOfKey);
}

void ReadStations(benchmark::State &state) {
    constexpr std::int64_t kKeysOfStation = 6;
    constexpr std::int64_t kValuesOfStation = 29;
    constexpr std::int64_t kKeysOfSettings = 1;  // a required section
    const std::string text = kq_bench::ModbusStations(KQ_BENCH_EXAMPLES, static_cast<int>(state.range(0)));
    CModel model(kq_bench::ModbusFile(KQ_BENCH_EXAMPLES, "modbus.pdt"));
    for (auto _ : state) {
        model.Read(text);
        state.PauseTiming();
        if (!model.Holds(state.range(0) * kKeysOfStation + kKeysOfSettings)) {
            state.SkipWithError("not all keys were read");
        }
        model.Forget();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * kValuesOfStation);
}

void ForgetPar(benchmark::State &state) {
    const std::string text = kq_bench::ParTextOfKeys(static_cast<int>(state.range(0)));
    CModel model;
    for (auto _ : state) {
        state.PauseTiming();
        model.Read(text);
        state.ResumeTiming();
        model.Forget();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * kValuesOfKey);
}

void WritePar(benchmark::State &state) {
    CModel model;
    model.Read(kq_bench::ParTextOfKeys(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(model.Written());
    }
    Check(state, model);
}

#define KQ_SIZES(work) BENCHMARK(work)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)

KQ_SIZES(ReadPar);
KQ_SIZES(WritePar);
KQ_SIZES(ForgetPar);
BENCHMARK(ReadStations)->Arg(10)->Arg(100)->Arg(999)->Unit(benchmark::kMillisecond);

}  // namespace
