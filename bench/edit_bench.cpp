/// Edits of a large model, as the sheet makes them: 1,000 sections with 100 keys each, each key with a channel, and a
/// value in each section that the conditions of its keys refer to. Each edit is whole: judged, published, settled and
/// kept.

#include <benchmark/benchmark.h>

#include <string>

#include "model/sheet_data.h"
#include "model/sheet_edit.h"

namespace {

constexpr std::uint32_t kSections = 1000;
constexpr std::uint32_t kKeys = 100;

constexpr const char *kPdt =
    "def_section name = 'Unit' + number { range_from = 0; range_to = 1000000 }; multiple; var %mode%;"
    " def_key name = 'Mode'; par = number { id = %mode%; range_from = 0; range_to = 9 }; end_key"
    " def_key name = 'Point' + number { range_from = 0; range_to = 1000000 }; multiple; channels;"
    "  par = number { ch_number; ch_count = 1; ch_type = real; ch_direction = input };"
    "  par = number { range_from = 0; range_to = 65535; enable_if %mode% < 5; }; end_key "
    "end_section";

std::string ParText() {
    std::string text;
    for (std::uint32_t section = 0; section < kSections; ++section) {
        text += "[Unit" + std::to_string(section) + "]\nMode = 1\n";
        for (std::uint32_t key = 0; key < kKeys; ++key) {
            text += "Point" + std::to_string(key) + " = " + std::to_string(1 + 2 * (section * kKeys + key)) + ", 7\n";
        }
    }
    return text;
}

/// One model for all benchmarks; each leaves it as it was.
class CLargeModel {
public:
    CLargeModel() : edit_(data_) {
        kq_pdt::TCompileResult result;
        good_ = data_.LoadTemplateText(kPdt, result);
        data_.ReadPar(ParText());
        good_ = good_ && data_.Instances().List().size() == kSections && data_.Ranges().RowCount() == kSections * kKeys;
    }

    static CLargeModel &Get(benchmark::State &state) {
        static CLargeModel model;
        if (!model.good_) {
            state.SkipWithError("the model isn't what it should be");
        }
        return model;
    }

    kq_pdt::CSectionDef &Section(std::uint32_t number) { return *data_.Instances().List()[number % kSections]; }
    kq_pdt::CSheetEdit &Edit() { return edit_; }
    kq_pdt::CSectionDef &Definition() { return *data_.Definitions().front(); }
    kq_pdt::CParSheetData &Data() { return data_; }

    /// Sets a cell to a number; false if that was refused.
    bool Set(kq_pdt::CSectionDef &section, kq_pdt::CKeyDef &key, std::uint32_t cell, std::uint32_t number) {
        kq_pdt::TCellEditor *editor = edit_.OpenCell(section, &key, cell);
        if (editor == nullptr) {
            return false;
        }
        if (editor->kind == kq_pdt::TCellEditor::TControl::kCountBox) {
            editor->CountBox().SetValue(number);
        } else {
            editor->EditBox().SetText(std::to_string(number));
        }
        return edit_.CloseCell(true);
    }

private:
    kq_pdt::CParSheetData data_;
    kq_pdt::CSheetEdit edit_;
    bool good_ = false;
};

void CommitChannel(benchmark::State &state) {
    CLargeModel &model = CLargeModel::Get(state);
    std::uint32_t number = 0;
    for (auto _ : state) {
        number = (number + 37) % kSections;
        kq_pdt::CSectionDef &section = model.Section(number);
        const std::uint32_t channel = 1 + 2 * (number * kKeys + 49);
        // To the free number above, and back.
        if (!model.Set(section, *section.Keys()[50], 2, channel + 1) ||
            !model.Set(section, *section.Keys()[50], 2, channel)) {
            state.SkipWithError("an edit was refused");
        }
    }
    state.SetItemsProcessed(2 * state.iterations());
}

void CommitPublished(benchmark::State &state) {
    CLargeModel &model = CLargeModel::Get(state);
    std::uint32_t number = 0;
    for (auto _ : state) {
        kq_pdt::CSectionDef &section = model.Section(number += 37);
        if (!model.Set(section, *section.Keys().front(), 1, 7) || !model.Set(section, *section.Keys().front(), 1, 1)) {
            state.SkipWithError("an edit was refused");
        }
    }
    state.SetItemsProcessed(2 * state.iterations());
}

void AddAndRemoveKey(benchmark::State &state) {
    CLargeModel &model = CLargeModel::Get(state);
    const kq_pdt::CKeyDef &definition = *model.Definition().Keys().back();
    const bool adds = state.range(0) != 0;
    std::uint32_t number = 0;
    for (auto _ : state) {
        if (!adds) {
            state.PauseTiming();
        }
        kq_pdt::CKeyDef *key = model.Edit().AddKey(model.Section(number += 37), definition);
        if (adds) {
            state.PauseTiming();
        } else {
            state.ResumeTiming();
        }
        if (key == nullptr || !model.Edit().RemoveKey(*key)) {
            state.SkipWithError("an edit was refused");
        }
        if (adds) {
            state.ResumeTiming();
        }
    }
}

void AddAndRemoveSection(benchmark::State &state) {
    CLargeModel &model = CLargeModel::Get(state);
    const bool adds = state.range(0) != 0;
    for (auto _ : state) {
        if (!adds) {
            state.PauseTiming();
        }
        kq_pdt::CSectionDef *section = model.Edit().AddSection(model.Definition());
        if (adds) {
            state.PauseTiming();
        } else {
            state.ResumeTiming();
        }
        if (section == nullptr || !model.Edit().RemoveSection(*section)) {
            state.SkipWithError("an edit was refused");
        }
        if (adds) {
            state.ResumeTiming();
        }
    }
}

/// A section with its hundred keys goes, and is read again outside of the measured time.
void RemoveLargeSection(benchmark::State &state) {
    for (auto _ : state) {
        state.PauseTiming();
        CLargeModel &model = CLargeModel::Get(state);
        model.Data().ReadPar(ParText());
        kq_pdt::CSectionDef &section = model.Section(500);
        state.ResumeTiming();
        if (!model.Edit().RemoveSection(section)) {
            state.SkipWithError("an edit was refused");
        }
    }
    CLargeModel::Get(state).Data().ReadPar(ParText());
}

BENCHMARK(CommitChannel)->Unit(benchmark::kMicrosecond);
BENCHMARK(CommitPublished)->Unit(benchmark::kMicrosecond);
BENCHMARK(AddAndRemoveKey)->ArgName("adds")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond)->Iterations(2000);
BENCHMARK(AddAndRemoveSection)->ArgName("adds")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond)->Iterations(2000);
BENCHMARK(RemoveLargeSection)->Unit(benchmark::kMicrosecond)->Iterations(10);

}  // namespace
