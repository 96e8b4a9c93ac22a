// A full scan of a parameter file of 10 MB, every section, key and value, beside inih with its values split at commas,
// and beside the limit: one table look-up a byte.
#include <benchmark/benchmark.h>
#include <ini.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "scanner/text_par_scanner.h"

namespace {

using namespace par_scanner;

constexpr std::size_t kTextSize = 10'000'000;
constexpr int kKeysPerSection = 40;

/// Sections of 40 keys with four values each, lines ending with CRLF, until the size is reached.
std::string MakeText() {
    constexpr std::array<std::string_view, 5> kTypes = {"BOOL", "INT16", "UINT32", "FLOAT", "STRING"};
    std::string text;
    std::uint32_t number = 12345;
    const auto next = [&number](std::uint32_t below) {
        number = number * 1664525U + 1013904223U;
        return (number >> 8U) % below;
    };
    for (int section = 1; text.size() < kTextSize; ++section) {
        text += "[Station" + std::to_string(section) + "]\r\n";
        for (int key = 1; key <= kKeysPerSection; ++key) {
            text += "Block" + std::to_string(key) + " = " + std::to_string(next(4000)) + ", " +
                    std::to_string(next(100000)) + ", ";
            text.append(kTypes[next(kTypes.size())]).append(next(2) == 0 ? ", R\r\n" : ", RW\r\n");
        }
    }
    return text;
}

const std::string &Text() {
    static const std::string kText = MakeText();
    return kText;
}

void Count(benchmark::State &state, std::size_t characters) {
    benchmark::DoNotOptimize(characters);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Text().size()));
}

void BM_ScannerWithCopies(benchmark::State &state) {
    std::size_t values = 0;
    for (auto _ : state) {
        CTextParScanner scanner(Text());
        char text[256];
        for (bool section = scanner.GetFirstSection(255, text); section; section = scanner.GetNextSection(255, text)) {
            for (bool key = scanner.GetFirstKey(255, text); key; key = scanner.GetNextKey(255, text)) {
                std::uint32_t separator = 0;
                for (bool value = scanner.GetFirstPar(255, text); value;
                     value = scanner.GetNextPar(255, text, separator)) {
                    values += text[0] != '\0' ? 1 : 0;
                }
            }
        }
        scanner.Done();
    }
    Count(state, values);
}
BENCHMARK(BM_ScannerWithCopies)->Unit(benchmark::kMillisecond);

void BM_ScannerAsViews(benchmark::State &state) {
    std::size_t values = 0;
    for (auto _ : state) {
        CTextParScanner scanner(Text());
        for (bool section = scanner.FirstSection(); section; section = scanner.NextSection()) {
            values += scanner.SectionName().size();
            for (bool key = scanner.FirstKey(); key; key = scanner.NextKey()) {
                values += scanner.KeyName().size();
                std::string_view value;
                std::uint32_t separator = 0;
                for (bool more = scanner.FirstValue(value); more; more = scanner.NextValue(value, separator)) {
                    values += value.size();
                }
            }
        }
        scanner.Done();
    }
    Count(state, values);
}
BENCHMARK(BM_ScannerAsViews)->Unit(benchmark::kMillisecond);

/// inih gives each line's text; the values are cut from it as a caller would do it.
int TakeLine(void *user, const char * /*section*/, const char *name, const char *text) {
    std::size_t &values = *static_cast<std::size_t *>(user);
    values += name[0] != '\0' ? 1 : 0;
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
        values += value.size();
        if (comma == std::string_view::npos) {
            return 1;
        }
        rest.remove_prefix(comma + 1);
    }
}

void BM_Inih(benchmark::State &state) {
    std::size_t values = 0;
    for (auto _ : state) {
        ini_parse_string(Text().c_str(), TakeLine, &values);
    }
    Count(state, values);
}
BENCHMARK(BM_Inih)->Unit(benchmark::kMillisecond);

void BM_TableLookUp(benchmark::State &state) {
    std::array<std::uint8_t, 256> structural{};
    for (const char character : std::string_view("\r\n[]=,' (")) {
        structural[static_cast<std::uint8_t>(character)] = 1;
    }
    std::size_t count = 0;
    for (auto _ : state) {
        for (const char character : Text()) {
            count += structural[static_cast<std::uint8_t>(character)];
        }
    }
    Count(state, count);
}
BENCHMARK(BM_TableLookUp)->Unit(benchmark::kMillisecond);

}  // namespace
