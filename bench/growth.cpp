// How work grows with its input. Each family of inputs is translated and written back at n, 2n and 4n; its exponent is
// that of the power of n by which the time grows. The program ends with 1 if one is above the limit, which n log n
// keeps below. Arguments choose families by the beginnings of their names.
//
//     growth [NAME...]

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string_view>

#include "bench/support/growth_families.h"
#include "configurator/kq_cfg.h"

namespace {

using kq_bench::TFamily;
using kq_bench::TInput;

constexpr double kLimit = 1.15;
constexpr int kRounds = 3;      ///< each size is measured as often, the shortest time counts
constexpr int kMoreRounds = 6;  ///< of a family above the limit, since what else runs only makes times longer
constexpr double kLongest = 2;  ///< seconds: a size that takes longer is the last one
constexpr std::array kFactors = {1U, 2U, 4U};

/// Seconds of the processor that a translation takes, with writing both files.
double Measure(const TInput &input) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    };
    const double begin = now();
    {
        kq_cfg::CConfiguration configuration({});
        configuration.Translate(input.pdt, input.par, input.dmf);
        if (!configuration.Report().result.ok) {
            std::printf("the template doesn't compile: %s\n", configuration.Report().result.message.c_str());
            std::exit(2);
        }
        static_cast<void>(configuration.ParText() + configuration.DmfText());
    }
    return now() - begin;
}

/// What was measured of a family: the shortest time at each size, and how many sizes there are.
struct TGrowth {
    std::array<double, kFactors.size()> seconds{};
    std::size_t count = kFactors.size();

    /// The lesser of those of the two doublings: the step beyond the size of a cache is in one of them, growing work in
    /// both.
    double Exponent() const {
        double exponent = std::log2(seconds[1] / seconds[0]);
        for (std::size_t at = 2; at < count; ++at) {
            exponent = std::min(exponent, std::log2(seconds[at] / seconds[at - 1]));
        }
        return exponent;
    }
};

TGrowth MeasureFamily(const TFamily &family) {
    TGrowth growth;
    growth.seconds.fill(std::numeric_limits<double>::max());
    for (int round = 0; round < kRounds || (growth.Exponent() > kLimit && round < kMoreRounds); ++round) {
        for (std::size_t at = 0; at < growth.count; ++at) {
            const double seconds = Measure(family.make(family.size * kFactors[at]));
            growth.seconds[at] = std::min(growth.seconds[at], seconds);
            if (seconds > kLongest && at != 0) {
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
    std::printf("%-42s %8s %9s %9s %9s  exponent\n", "", "n", "n [ms]", "2n", "4n");
    for (const TFamily &family : kq_bench::GrowthFamilies()) {
        if (!IsWanted(family.name, argc - 1, argv + 1)) {
            continue;
        }
        const TGrowth growth = MeasureFamily(family);
        const bool fails = growth.Exponent() > kLimit;
        above += fails ? 1 : 0;
        std::printf("%-42.*s %8u", static_cast<int>(family.name.size()), family.name.data(), family.size);
        for (std::size_t at = 0; at < kFactors.size(); ++at) {
            at < growth.count ? std::printf(" %9.1f", 1e3 * growth.seconds[at]) : std::printf(" %9s", "-");
        }
        std::printf("  %8.2f%s\n", growth.Exponent(), fails ? "  above the limit" : "");
        std::fflush(stdout);
    }
    return above == 0 ? 0 : 1;
}
