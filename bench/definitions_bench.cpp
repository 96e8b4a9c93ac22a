/// Which definition does a name belong to: whole parameter files against templates that both grow with the argument,
/// and one name against a hundred definitions, beside RE2::Set. Time should grow in proportion to the argument; where
/// Google's library reports a BigO, it is that of the time a section or key.

#include <benchmark/benchmark.h>
#include <re2/set.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "model/matcher.h"
#include "model/sheet_data.h"

namespace {

using kq_pdt::CParSheetData;

/// A template and a parameter file for it, both of a given size.
struct TFamily {
    std::string_view name;
    std::function<std::string(int)> pdt;
    std::function<std::string(int)> par;
};

/// The text that part gives for each number from 0 to below count, one after the other.
template <class TPart>
std::string Repeated(int count, const TPart &part) {
    std::string text;
    for (int number = 0; number < count; ++number) {
        text += part(std::to_string(number));
    }
    return text;
}

constexpr std::string_view kKeys = "; def_key name = 'Limit'; par = number { optional }; end_key end_section\n";
constexpr std::string_view kLines = "]\n  Limit = 12\n";

std::string Section(const std::string &name) { return ("def_section name = " + name).append(kKeys); }
std::string Lines(const std::string &name) { return ("[" + name).append(kLines); }

/// A section whose keys publish a number each, so that as many dependent sections are created.
std::string Sources(const std::string &dependent) {
    return "def_section name = 'Meters'; required; def_key name = 'm' + number; multiple; "
           "par = number { id = %m% }; end_key end_section\n" +
           Section(dependent + "; depend_on = %m%");
}
std::string SourceLines(int count) {
    return "[Meters]\n" + Repeated(count, [](const auto &number) { return "  m" + number + " = " + number + "\n"; });
}

const std::vector<TFamily> kFamilies = {
    {"SectionsOfConstants",
     [](int count) { return Repeated(count, [](const auto &number) { return Section("'Pump_" + number + "'"); }); },
     [](int count) { return Repeated(count, [](const auto &number) { return Lines("Pump_" + number); }); }},
    {"SectionsThatBeginWithConstants",
     [](int count) {
         return Repeated(count,
                         [](const auto &number) { return Section("'Pump_" + number + "_' + number; multiple"); });
     },
     [](int count) { return Repeated(count, [](const auto &number) { return Lines("Pump_" + number + "_3"); }); }},
    {"KeysOfConstants",
     [](int count) {
         return "def_section name = 'Pumps';\n" +
                Repeated(count,
                         [](const auto &number) {
                             return "def_key name = 'Pump_" + number + "'; par = number; end_key\n";
                         }) +
                "end_section\n";
     },
     [](int count) {
         return "[Pumps]\n" +
                Repeated(count, [](const auto &number) { return "  Pump_" + number + " = " + number + "\n"; });
     }},
    {"PublishingBesideUnknown", [](int) { return Section("'Meter' + number { id = %m% }; multiple"); },
     [](int count) {
         return Repeated(count, [](const auto &number) { return Lines("Meter" + number); }) +
                Repeated(count, [](const auto &number) { return Lines("Pump_" + number); });
     }},
    {"PublishingBesideDependent",
     [](int) { return Section("'Line' + number { id = %l% }; multiple") + Sources("'Pump' + %m%"); },
     [](int count) {
         return SourceLines(count) + Repeated(count, [](const auto &number) { return Lines("Line" + number); }) +
                Repeated(count, [](const auto &number) { return Lines("Pump" + number); });
     }},
    {"DependentWithNumber", [](int) { return Sources("'Meter' + %m% + '-' + number; multiple"); },
     [](int count) {
         return SourceLines(count) + Repeated(count, [](const auto &number) { return Lines("Meter" + number + "-1"); });
     }},
};

void ReadFamily(benchmark::State &state, const TFamily &family) {
    const auto count = static_cast<int>(state.range(0));
    kq_pdt::TCompileResult result;
    CParSheetData data;
    if (!data.LoadTemplateText("ver_from = 50020;\n" + family.pdt(count), result)) {
        state.SkipWithError("the template doesn't compile");
        return;
    }
    const std::string par = family.par(count);
    for (auto _ : state) {
        data.ReadPar(par);
        state.PauseTiming();
        data.ClearInstances();
        state.ResumeTiming();
    }
    state.SetComplexityN(count);
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
    for (const TFamily &family : kFamilies) {
        benchmark::RegisterBenchmark(std::string(family.name).c_str(),
                                     [&family](benchmark::State &state) { ReadFamily(state, family); })
            ->RangeMultiplier(2)
            ->Range(4096, 16384)
            ->Unit(benchmark::kMillisecond)
            ->Complexity(benchmark::oN);
    }
    return true;
}();

}  // namespace
