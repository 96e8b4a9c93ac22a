/// The matcher of names and values beside RE2, both with the pieces that the text was cut into. `Results` gives clones
/// of the items with their pieces too.

#include <benchmark/benchmark.h>
#include <re2/re2.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/matcher.h"
#include "model/sheet_data.h"
#include "template/compiler.h"

namespace {

/// A pattern in both languages.
struct TPattern {
    std::string_view name;
    std::string_view value_list;
    const char *expression;
    int captures;
};

constexpr std::array<TPattern, 5> kPatterns = {{
    {"const_number", "'ch' + number", "ch([0-9]*)", 1},
    {"string_string", "string + '.' + string", "(.*)\\.(.*)", 2},
    {"three_parts", "number + ':' + string + '/' + number", "([0-9]*):(.*)/([0-9]*)", 3},
    {"four_strings", "string + string + string + string", "(.*)(.*)(.*)(.*)", 4},
    {"four_strings_end", "string + string + string + string + '#'", "(.*)(.*)(.*)(.*)#", 4},
}};
enum class TPatternIndex : std::size_t { kConstNumber, kStringString, kThreeParts, kFourStrings, kFourStringsEnd };

/// What is matched: a pattern, a text, and whether it fits.
struct TCase {
    std::string name;
    const TPattern *pattern;
    std::string text;
    bool hit;
};

/// A text of exactly the length: a word without digits, points or strokes, again and again.
std::string Filled(std::size_t length) {
    constexpr std::string_view kWord = "boiler pump ";
    std::string text;
    while (text.size() < length) {
        text += kWord;
    }
    text.resize(length);
    return text;
}

std::vector<TCase> Cases() {
    using enum TPatternIndex;
    std::vector<TCase> cases;
    const auto add = [&cases](TPatternIndex pattern, bool hit, const std::string &text) {
        const TPattern &used = kPatterns[static_cast<std::size_t>(pattern)];
        cases.push_back(
            {std::string(used.name) + (hit ? "/hit/" : "/miss/") + std::to_string(text.size()), &used, text, hit});
    };
    for (const std::size_t length : {8, 40}) {
        add(kConstNumber, true, "ch" + std::string(length - 2, '7'));
        add(kConstNumber, false, "ch" + std::string(length - 3, '7') + "x");
        add(kStringString, true, Filled(length / 2) + "." + Filled(length - length / 2 - 1));
        add(kStringString, false, Filled(length));
        add(kThreeParts, true, "12:" + Filled(length - 6) + "/34");
        add(kThreeParts, false, "12:" + Filled(length - 3));
    }
    for (const std::size_t length : {50, 100, 200, 255}) {
        add(kFourStrings, true, Filled(length));
        add(kFourStringsEnd, false, Filled(length));
    }
    return cases;
}

/// The items of a value list.
class COurPattern {
public:
    explicit COurPattern(std::string_view value_list) {
        kq_pdt::CPdtCompiler compiler;
        kq_pdt::CSectionList sections;
        kq_pdt::TCompileResult result;
        compiler.Init(data_, value_list, data_.RootScope(), sections);
        compiler.CompileValueList(list_, result);
    }
    const kq_pdt::CItemSeq &Items() const { return list_->Items(); }

private:
    kq_pdt::CParSheetData data_;
    std::unique_ptr<kq_pdt::CItemList> list_;
};

void Check(benchmark::State &state, bool matched, const TCase &match_case) {
    if (matched != match_case.hit) {
        state.SkipWithError("the wrong answer");
    }
}

void Run(benchmark::State &state, const TCase &match_case) {
    const COurPattern pattern(match_case.pattern->value_list);
    kq_pdt::CMatcher matcher;
    bool matched = false;
    for (auto _ : state) {
        matcher.Begin(match_case.text);
        matcher.AddPattern(pattern.Items(), nullptr, nullptr);
        matched = matcher.Run();
        benchmark::DoNotOptimize(matched ? matcher.Cuts().data() : nullptr);
    }
    Check(state, matched, match_case);
}

void Results(benchmark::State &state, const TCase &match_case) {
    const COurPattern pattern(match_case.pattern->value_list);
    kq_pdt::CMatcher matcher;
    for (auto _ : state) {
        matcher.Begin(match_case.text);
        matcher.AddPattern(pattern.Items(), nullptr, nullptr);
        matcher.Run();
        benchmark::DoNotOptimize(matcher.TakeResults());
    }
}

void Re2(benchmark::State &state, const TCase &match_case) {
    RE2::Options options(RE2::Latin1);
    options.set_dot_nl(true);
    const RE2 expression(match_case.pattern->expression, options);
    std::array<re2::StringPiece, 4> pieces;
    std::array<RE2::Arg, 4> arguments;
    std::array<const RE2::Arg *, 4> addresses{};
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        arguments[index] = &pieces[index];
        addresses[index] = &arguments[index];
    }
    bool matched = false;
    for (auto _ : state) {
        matched = RE2::FullMatchN(match_case.text, expression, addresses.data(), match_case.pattern->captures);
        benchmark::DoNotOptimize(matched);
        benchmark::DoNotOptimize(pieces);
    }
    Check(state, matched, match_case);
}

/// A text of many parts against strings that publish what they have at each character, and an end that isn't there.
void Publishing(benchmark::State &state, std::string_view value_list) {
    const COurPattern pattern(value_list);
    std::string text;
    while (text.size() < 240) {
        text += "a.";
    }
    kq_pdt::CMatcher matcher;
    for (auto _ : state) {
        matcher.Begin(text);
        matcher.AddPattern(pattern.Items(), nullptr, nullptr);
        if (matcher.Run()) {
            state.SkipWithError("the wrong answer");
        }
    }
}

const bool kPublishingRegistered = [] {
    constexpr std::array<std::pair<const char *, std::string_view>, 3> kLists = {{
        {"publishing/two_strings", "string { id = %v% } + '.' + string { id = %v% } + '#'"},
        {"publishing/three_strings", "string { id = %v% } + '.' + string { id = %v% } + '.' + string + '#'"},
        {"publishing/four_strings", "string { id = %v% } + string { id = %v% } + string { id = %v% } + string + '#'"},
    }};
    for (const auto &[name, value_list] : kLists) {
        benchmark::RegisterBenchmark(name, [list = value_list](benchmark::State &state) {
            Publishing(state, list);
        })->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

/// Peers run right after each other, so that a disturbance of the machine hits them alike.
const bool kRegistered = [] {
    for (const TCase &match_case : Cases()) {
        const auto add = [&match_case](const std::string &who, auto work) {
            benchmark::RegisterBenchmark((match_case.name + "/" + who).c_str(),
                                         [=](benchmark::State &state) { work(state, match_case); });
        };
        add("Run", Run);
        if (match_case.hit) {
            add("Results", Results);
        }
        add("Re2", Re2);
    }
    return true;
}();

}  // namespace
