// How work grows with its input. Each family of inputs is translated and written back at n, 2n and 4n; its exponent is
// that of the power of n by which the effort grows from n to 4n. Arguments choose families by the beginnings of their
// names.
//
//     growth [NAME...]
//     growth_times [NAME...]
//
// The first counts steps (bench/support/effort_in_steps.cpp) and ends with 1 if an exponent is above the limit, which
// n log n stays below. The second measures seconds, which grow faster where caches end, and has no limit.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "bench/support/effort.h"
#include "bench/support/growth_families.h"
#include "configurator/kq_cfg.h"

namespace {

using kq_bench::kEffort;
using kq_bench::TFamily;
using kq_bench::TInput;

constexpr double kLimit = 1.15;
constexpr std::array kFactors = {1U, 2U, 4U};

/// What a translation takes, with writing both files.
double Measure(const TInput &input) {
    const double begin = kq_bench::Effort();
    {
        kq_cfg::CConfiguration configuration({});
        configuration.Translate(input.pdt, input.par, input.dmf);
        if (!configuration.Report().result.ok) {
            std::printf("the template doesn't compile: %s\n", configuration.Report().result.message.c_str());
            std::exit(2);
        }
        static_cast<void>(configuration.ParText() + configuration.DmfText());
    }
    return kq_bench::Effort() - begin;
}

/// What was measured of a family: the least effort at each size, and how many sizes there are.
struct TGrowth {
    std::array<double, kFactors.size()> effort{};
    std::size_t count = kFactors.size();

    double Exponent() const { return std::log2(effort[count - 1] / effort[0]) / std::log2(kFactors[count - 1]); }
};

TGrowth MeasureFamily(const TFamily &family) {
    TGrowth growth;
    growth.effort.fill(std::numeric_limits<double>::max());
    for (int round = 0; round < kEffort.rounds; ++round) {
        for (std::size_t at = 0; at < growth.count; ++at) {
            const double effort = Measure(family.make(family.size * kFactors[at]));
            growth.effort[at] = std::min(growth.effort[at], effort);
            if (effort > kEffort.longest && at != 0) {
                growth.count = at + 1;
                return growth;
            }
        }
    }
    return growth;
}

bool IsWanted(std::string_view name, int count, char **wanted) {
    return count == 0 ||
           std::any_of(wanted, wanted + count, [&](const char *begin) { return name.starts_with(begin); });
}

}  // namespace

int main(int argc, char **argv) {
    int above = 0;
    std::printf("%-42s %8s %10s %10s %10s  exponent  [%s]\n", "", "n", "at n", "2n", "4n", kEffort.unit);
    for (const TFamily &family : kq_bench::GrowthFamilies()) {
        if (!IsWanted(family.name, argc - 1, argv + 1)) {
            continue;
        }
        const TGrowth growth = MeasureFamily(family);
        const bool fails = kEffort.limited && growth.Exponent() > kLimit;
        above += fails ? 1 : 0;
        std::printf("%-42.*s %8u", static_cast<int>(family.name.size()), family.name.data(), family.size);
        for (std::size_t at = 0; at < kFactors.size(); ++at) {
            at < growth.count ? std::printf(" %10.1f", growth.effort[at] / kEffort.units) : std::printf(" %10s", "-");
        }
        std::printf("  %8.2f%s\n", growth.Exponent(), fails ? "  above the limit" : "");
        std::fflush(stdout);
    }
    return above == 0 ? 0 : 1;
}
