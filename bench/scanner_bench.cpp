// A walk through every section, key and value of a parameter file of 10 MB, the examples' files over and over, beside
// inih with its values split at commas, and beside the limit: one table look-up a byte. A text in quotes, a comment,
// an exponent or `..` is added to a share of the lines, or a line that is a comment is put after them: the names of the
// benchmarks tell which.
#include <benchmark/benchmark.h>
#include <ini.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

#include "bench/support/plant_text.h"
#include "scanner/text_par_scanner.h"

namespace {

using namespace par_scanner;

constexpr std::size_t kTextSize = 10'000'000;

struct TInput {
    std::string_view name;
    kq_bench::TPlantLines lines;
};

constexpr std::array kInputs = {
    TInput{"plain", {"", 0}},
    TInput{"quotes/6", {", 'Boiler 1, east'", 6}},
    TInput{"quotes/15", {", 'Boiler 1, east'", 15}},
    TInput{"quotes/50", {", 'Boiler 1, east'", 50}},
    TInput{"quotes/100", {", 'Boiler 1, east'", 100}},
    TInput{"quotes_LF/100", {", 'Boiler 1, east'", 100, false}},
    TInput{"comments/50", {"  (* the old one *)", 50}},
    TInput{"comments/100", {"  (* the old one *)", 100}},
    TInput{"comment_lines/50", {"\r\n  (* Block = 16, 'the old one' *)", 50}},
    TInput{"exponents/100", {", 1E5, 0x1E", 100}},
    TInput{"dots/100", {", 1..5", 100}},
};

const std::string &Text(const TInput &input) {
    static std::map<std::string_view, std::string> texts;
    std::string &text = texts[input.name];
    if (text.empty()) {
        text = kq_bench::CPlantText(KQ_BENCH_EXAMPLES, input.lines).Make(kTextSize);
    }
    return text;
}

void Init(const std::string &text, std::size_t &found) {
    const CTextParScanner scanner(text);
    found += scanner.ActSection() != nullptr ? 1 : 0;
}

void WalkWithCopies(const std::string &content, std::size_t &found) {
    CTextParScanner scanner(content);
    char text[256];
    for (bool section = scanner.GetFirstSection(255, text); section; section = scanner.GetNextSection(255, text)) {
        for (bool key = scanner.GetFirstKey(255, text); key; key = scanner.GetNextKey(255, text)) {
            std::uint32_t separator = 0;
            for (bool value = scanner.GetFirstPar(255, text); value; value = scanner.GetNextPar(255, text, separator)) {
                found += text[0] != '\0' ? 1 : 0;
            }
        }
    }
}

void WalkViews(const std::string &content, std::size_t &found) {
    CTextParScanner scanner(content);
    for (bool section = scanner.FirstSection(); section; section = scanner.NextSection()) {
        found += scanner.SectionName().size();
        for (bool key = scanner.FirstKey(); key; key = scanner.NextKey()) {
            found += scanner.KeyName().size();
            std::string_view value;
            std::uint32_t separator = 0;
            for (bool more = scanner.FirstValue(value); more; more = scanner.NextValue(value, separator)) {
                found += value.size();
            }
        }
    }
}

/// inih gives each line's text; the values are cut from it as a caller would do it.
int TakeLine(void *user, const char * /*section*/, const char *name, const char *text) {
    std::size_t &found = *static_cast<std::size_t *>(user);
    found += name[0] != '\0' ? 1 : 0;
    std::string_view rest = text;
    for (;;) {
        const std::size_t comma = rest.find(',');
        std::string_view value = rest.substr(0, comma);
        while (!value.empty() && value.front() == ' ') {
            value.remove_prefix(1);
        }
        while (!value.empty() && value.back() == ' ') {
            value.remove_suffix(1);
        }
        found += value.size();
        if (comma == std::string_view::npos) {
            return 1;
        }
        rest.remove_prefix(comma + 1);
    }
}

/// Indented lines are continuations to inih, so it is given the text without indentation.
void WalkWithInih(const std::string &text, std::size_t &found) {
    static std::map<const std::string *, std::string> texts;
    std::string &flat = texts[&text];
    if (flat.empty()) {
        std::unique_copy(text.begin(), text.end(), std::back_inserter(flat),
                         [](char before, char next) { return (before == '\n' || before == '\r') && next == ' '; });
    }
    ini_parse_string(flat.c_str(), TakeLine, &found);
}

void LookUpEachByte(const std::string &text, std::size_t &found) {
    static const auto kStructural = [] {
        std::array<std::uint8_t, 256> structural{};
        for (const char character : std::string_view("\r\n[]=,' (")) {
            structural[static_cast<std::uint8_t>(character)] = 1;
        }
        return structural;
    }();
    for (const char character : text) {
        found += kStructural[static_cast<std::uint8_t>(character)];
    }
}

using TWork = void (*)(const std::string &text, std::size_t &found);

void Measure(benchmark::State &state, TWork work, const TInput &input) {
    const std::string &text = Text(input);
    std::size_t found = 0;
    for (auto _ : state) {
        work(text, found);
    }
    benchmark::DoNotOptimize(found);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

const bool kRegistered = [] {
    struct TNamedWork {
        std::string_view name;
        TWork work;
    };
    for (const TInput &input : kInputs) {
        for (const auto &[name, work] :
             {TNamedWork{"/copies", WalkWithCopies}, TNamedWork{"/views", WalkViews}, TNamedWork{"/init", Init},
              TNamedWork{"/inih", WalkWithInih}, TNamedWork{"/table", LookUpEachByte}}) {
            benchmark::RegisterBenchmark(std::string(input.name).append(name).c_str(), Measure, work, input)
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}();

}  // namespace
