/// Which of a hundred definitions does a name belong to, beside RE2::Set. How the time grows with the number of
/// definitions is measured by growth.cpp.

#include <benchmark/benchmark.h>
#include <re2/set.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/matcher.h"
#include "model/sheet_data.h"

namespace {

using kq_pdt::CParSheetData;

std::string Section(const std::string &name) {
    return "def_section name = " + name + "; def_key name = 'Limit'; par = number { optional }; end_key end_section\n";
}

/// A hundred names such as a template of a plant has them, in both languages; the text of each is the name followed by
/// a number, unless the name is a constant.
struct THundred {
    std::string pdt;
    std::vector<std::string> expressions;
    std::vector<std::string> texts;
};

THundred HundredNames(bool constants) {
    constexpr std::array<std::string_view, 10> kWords = {"Line",  "Station", "Register", "Pump",   "Valve",
                                                         "Alarm", "Trend",   "Archive",  "Boiler", "Motor"};
    THundred hundred;
    for (int number = 0; number < 100; ++number) {
        const std::string name = std::string(kWords[static_cast<std::size_t>(number % 10)]) + "_" +
                                 std::to_string(number) + (constants ? "" : "_");
        hundred.pdt += Section("'" + name + (constants ? "'" : "' + number; multiple"));
        hundred.expressions.push_back(name + (constants ? "" : "[0-9]*"));
        hundred.texts.push_back(name + (constants ? "" : std::to_string(number * 7)));
    }
    return hundred;
}

void OursAmongHundred(benchmark::State &state, bool constants) {
    const THundred hundred = HundredNames(constants);
    kq_pdt::TCompileResult result;
    CParSheetData data;
    data.LoadTemplateText("ver_from = 50020;\n" + hundred.pdt, result);
    kq_pdt::CMatcher matcher;
    std::vector<kq_pdt::CNameIndex::TEntry> found;
    std::size_t next = 0;
    for (auto _ : state) {
        const std::string &text = hundred.texts[next];
        data.DefinitionNames().Find(text, found);
        matcher.Begin(text);
        for (const kq_pdt::CNameIndex::TEntry &entry : found) {
            matcher.AddPattern(entry.node->Names()->Items(), entry.node, nullptr);
        }
        if (!matcher.Run() || found[matcher.Winner()].node != data.Definitions()[next].get()) {
            state.SkipWithError("the wrong definition");
            break;
        }
        benchmark::DoNotOptimize(matcher.Cuts().data());
        next = (next + 1) % hundred.texts.size();
    }
}

void Re2AmongHundred(benchmark::State &state, bool constants) {
    const THundred hundred = HundredNames(constants);
    RE2::Set set(RE2::Options(RE2::Latin1), RE2::ANCHOR_BOTH);
    for (const std::string &expression : hundred.expressions) {
        set.Add(expression, nullptr);
    }
    set.Compile();
    std::vector<int> found;
    std::size_t next = 0;
    for (auto _ : state) {
        found.clear();
        if (!set.Match(hundred.texts[next], &found) || found.front() != static_cast<int>(next)) {
            state.SkipWithError("the wrong expression");
            break;
        }
        next = (next + 1) % hundred.texts.size();
    }
}

const bool kRegistered = [] {
    for (const bool constants : {true, false}) {
        const std::string name = constants ? "AmongHundredConstants" : "AmongHundredThatBeginWithConstants";
        benchmark::RegisterBenchmark((name + "/Ours").c_str(),
                                     [=](benchmark::State &state) { OursAmongHundred(state, constants); });
        benchmark::RegisterBenchmark((name + "/Re2Set").c_str(),
                                     [=](benchmark::State &state) { Re2AmongHundred(state, constants); });
    }
    return true;
}();

}  // namespace
