// How work grows with its input. Each family of inputs is translated and written back at n, 2n and 4n; its exponent is
// that of the power of n by which the time grows from n to 4n. It ends with 1 if one is above the limit, which n log n
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
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "configurator/kq_cfg.h"

namespace {

constexpr double kLimit = 1.15;
constexpr int kRounds = 3;      ///< each size is measured as often, the shortest time counts
constexpr int kMoreRounds = 6;  ///< of a family above the limit, since what else runs only makes times longer
constexpr double kLongest = 2;  ///< seconds: a size that takes longer is the last one
constexpr std::array kFactors = {1U, 2U, 4U};

struct TInput {
    std::string pdt;
    std::string par;
    std::string dmf;
};

struct TFamily {
    std::string_view name;
    std::uint32_t size;  ///< n
    std::function<TInput(std::uint32_t n)> make;
};

/// The pattern n times. In it `#` is the number of the time, from 0, `^` counts downwards and `?` goes through the same
/// numbers in another order.
std::string Times(std::uint32_t n, std::string_view pattern) {
    std::string text;
    for (std::uint32_t at = 0; at < n; ++at) {
        for (const char character : pattern) {
            if (character == '#') {
                text += std::to_string(at);
            } else if (character == '^') {
                text += std::to_string(n - 1 - at);
            } else if (character == '?') {
                text += std::to_string(std::uint64_t{at} * 7919U % n);
            } else {
                text += character;
            }
        }
    }
    return text;
}

/// Numbers that blocks of channels may start at: ten apart.
std::string Ranges(std::uint32_t n, std::string_view order, int length) {
    std::string text = "begin\n";
    for (std::uint32_t at = 0; at < n; ++at) {
        const std::uint64_t place = order == "up" ? at : order == "down" ? n - 1 - at : std::uint64_t{at} * 7919U % n;
        const std::uint64_t first = 10 * place + 1;
        text += std::to_string(first) + " - " + std::to_string(first + static_cast<std::uint64_t>(length) - 1) +
                (place % 2 == 0 ? " real input\n" : " boolean output\n");
    }
    return text + "end.\n";
}

const std::string kUnit =
    "def_section name = 'Unit' + number; multiple; "
    "def_key name = 'Key' + number; multiple; par = number; par = string; end_key end_section ";
const std::string kSlot =
    "def_section name = 'Slot' + number; multiple; "
    "def_key name = 'Meter'; par = number { id = %m% }; end_key end_section "
    "def_section name = 'Meter' + %m%; depend_on = %m%; "
    "def_key name = 'Key'; par = number; end_key end_section ";
const std::string kNamed =
    "def_section name = 'Slot' + number; multiple; "
    "def_key name = 'Meter'; par = string { id = %m% }; end_key end_section "
    "def_section name = %m%; depend_on = %m%; "
    "def_key name = 'Key'; par = number; end_key end_section ";
const std::string kPublishing =
    "def_section name = 'Meter' + number { id = %m% }; multiple; def_key name = 'Key'; par = number; end_key "
    "end_section ";
const std::string kShowing =
    "def_section name = 'Port'; def_key name = 'Unit'; par = number { id = %m% }; end_key "
    "end_section def_section name = 'Meter' + %m% + '-' + number; multiple; "
    "def_key name = 'Key'; par = number; end_key end_section ";
const std::string kBlock =
    "def_section name = 'Unit'; def_key name = 'Block'; multiple; channels; "
    "par = number { ch_from }; par = number { ch_to }; "
    "par = string { ch_type = real; ch_direction = input }; end_key end_section ";
const std::string kGroup =
    "def_section name = 'Unit'; def_key name = 'Group'; multiple; var %f%; "
    "par = number { id = %f% }; channels_group { ch_from = %f%; ch_to = %f% + 3; type true, real; "
    "direction true, input; }; end_key end_section ";

std::string Blocks(std::uint32_t n, std::string_view order) {
    std::string text = "[Unit]\n";
    for (std::uint32_t at = 0; at < n; ++at) {
        const std::uint64_t place = order == "up" ? at : order == "down" ? n - 1 - at : std::uint64_t{at} * 7919U % n;
        text += "Block = " + std::to_string(10 * place + 3) + ", " + std::to_string(10 * place + 5) + ", x\n";
    }
    return text;
}

const std::vector<TFamily> &Families() {
    static const std::vector<TFamily> kFamilies = {
        {"lines", 40000,
         [](auto n) {
             return TInput{kUnit, "[Unit1]\n" + Times(n, "\n(* # *)\nKey1 = 1, 'a b'\n"), ""};
         }},
        {"sections", 10000,
         [](auto n) {
             return TInput{kUnit, Times(n, "[Unit#]\nKey1 = 1, a\n"), ""};
         }},
        {"sections of one name", 10000,
         [](auto n) {
             return TInput{kUnit, Times(n, "[Unit1]\nKey1 = 1, a\n"), ""};
         }},
        {"keys", 20000,
         [](auto n) {
             return TInput{kUnit, "[Unit1]\n" + Times(n, "Key# = 1, a\n"), ""};
         }},
        {"keys of one name", 20000,
         [](auto n) {
             return TInput{kUnit, "[Unit1]\n" + Times(n, "Key1 = #, a\n"), ""};
         }},
        {"values too many", 40000,
         [](auto n) {
             return TInput{kUnit, "[Unit1]\nKey1 = 1" + Times(n, ", #") + "\n", ""};
         }},
        {"values read_all", 40000,
         [](auto n) {
             return TInput{
                 "def_section name = 'Unit'; def_key name = 'Key'; par = string { read_all }; end_key "
                 "end_section",
                 "[Unit]\nKey = 1" + Times(n, ", #") + "\n", ""};
         }},
        {"unknown sections", 20000,
         [](auto n) {
             return TInput{kUnit, Times(n, "[What#]\nKey1 = 1\n"), ""};
         }},
        {"unknown keys", 20000,
         [](auto n) {
             return TInput{kUnit, "[Unit1]\n" + Times(n, "What# = 1\n"), ""};
         }},
        {"refused values", 20000,
         [](auto n) {
             return TInput{kUnit, "[Unit1]\n" + Times(n, "Key# = x#\n"), ""};
         }},
        {"dependent by number", 3000,
         [](auto n) {
             return TInput{kSlot, Times(n, "[Slot#]\nMeter = #\n") + Times(n, "[Meter#]\nKey = 1\n"), ""};
         }},
        {"dependent by number, first", 3000,
         [](auto n) {
             return TInput{kSlot, Times(n, "[Meter?]\nKey = 1\n") + Times(n, "[Slot#]\nMeter = #\n"), ""};
         }},
        {"dependent by number, not there", 3000,
         [](auto n) {
             return TInput{kSlot, Times(n, "[Slot#]\nMeter = #\n"), ""};
         }},
        {"dependent by text", 3000,
         [](auto n) {
             return TInput{kNamed, Times(n, "[Slot#]\nMeter = M#\n") + Times(n, "[M#]\nKey = 1\n"), ""};
         }},
        {"dependent by text, not there", 3000,
         [](auto n) {
             return TInput{kNamed, Times(n, "[Slot#]\nMeter = M#\n"), ""};
         }},
        {"dependent by text, none slot", 3000,
         [](auto n) {
             return TInput{kNamed, Times(n, "[M#]\nKey = 1\n"), ""};
         }},
        {"publishing names", 5000,
         [](auto n) {
             return TInput{kPublishing, Times(n, "[Meter#]\nKey = 1\n"), ""};
         }},
        {"publishing names, unknown", 5000,
         [](auto n) {
             return TInput{kPublishing, Times(n, "[Meter#]\nKey = 1\n[What#]\n"), ""};
         }},
        {"publishing names, dependent", 3000,
         [](auto n) {
             return TInput{kPublishing + kSlot.substr(kSlot.find("def_section name = 'Meter'")),
                           Times(n, "[Meter#]\nKey = 1\n"), ""};
         }},
        {"showing names", 5000,
         [](auto n) {
             return TInput{kShowing, "[Port]\nUnit = 4\n" + Times(n, "[Meter4-#]\nKey = 1\n"), ""};
         }},
        {"required sections", 4000,
         [](auto n) {
             return TInput{Times(n,
                                 "def_section name = 'S#'; required; def_key name = 'K'; par = number; end_key "
                                 "end_section\n"),
                           Times(n, "[S#]\nK = 1\n"), ""};
         }},
        {"required sections, missing", 4000,
         [](auto n) {
             return TInput{Times(n,
                                 "def_section name = 'S#'; required; def_key name = 'K'; par = number; end_key "
                                 "end_section\n"),
                           "", ""};
         }},
        {"required sections, missing, that publish", 4000,
         [](auto n) {
             return TInput{Times(n,
                                 "def_section name = 'S#'; required; def_key name = 'K'; par = number { id = %v#% }; "
                                 "end_key end_section\n"),
                           "", ""};
         }},
        {"groups", 5000,
         [](auto n) {
             return TInput{kGroup, "[Unit]\n" + Times(n, "Group = 1#0\n"), ""};
         }},
        {"blocks ascending", 10000,
         [](auto n) {
             return TInput{kBlock, Blocks(n, "up"), ""};
         }},
        {"blocks descending", 10000,
         [](auto n) {
             return TInput{kBlock, Blocks(n, "down"), ""};
         }},
        {"blocks mixed", 10000,
         [](auto n) {
             return TInput{kBlock, Blocks(n, "mixed"), ""};
         }},
        {"blocks over the map", 10000,
         [](auto n) {
             return TInput{kBlock, Blocks(n, "mixed"), Ranges(n, "mixed", 8)};
         }},
        {"map ascending", 40000,
         [](auto n) {
             return TInput{kBlock, "", Ranges(n, "up", 10)};
         }},
        {"map descending", 40000,
         [](auto n) {
             return TInput{kBlock, "", Ranges(n, "down", 10)};
         }},
        {"map mixed", 40000,
         [](auto n) {
             return TInput{kBlock, "", Ranges(n, "mixed", 7)};
         }},
        {"map overlapping", 10000,
         [](auto n) {
             return TInput{kBlock, "", Ranges(n, "up", 12)};
         }},
        {"map overlapping, mixed", 10000,
         [](auto n) {
             return TInput{kBlock, "", Ranges(n, "mixed", 35)};
         }},
        {"map of equal ranges", 10000,
         [](auto n) {
             return TInput{kBlock, "", "begin\n" + Times(n, "1 - 9 real input\n") + "end.\n"};
         }},
        {"map of nested ranges", 10000,
         [](auto n) {
             return TInput{kBlock, "", "begin\n" + Times(n, "1# - 9^999999 real input\n") + "end.\n"};
         }},
        {"map under one block", 10000,
         [](auto n) {
             return TInput{kBlock, "[Unit]\nBlock = 1, 4000000, x\n", Ranges(n, "mixed", 8)};
         }},
        {"map kept aside", 20000,
         [](auto n) {
             return TInput{kBlock, "", "begin\n" + Times(n, "# buffer input\n") + "end.\n"};
         }},
        {"definitions", 4000,
         [](auto n) {
             return TInput{Times(n, "def_section name = 'S#'; def_key name = 'K'; par = number; end_key end_section\n"),
                           "", ""};
         }},
        {"definitions and sections", 2000,
         [](auto n) {
             return TInput{Times(n, "def_section name = 'S#'; def_key name = 'K'; par = number; end_key end_section\n"),
                           Times(n, "[S?]\nK = 1\n"), ""};
         }},
        {"definitions with a number and sections", 2000,
         [](auto n) {
             return TInput{Times(n, "def_section name = 'S#-' + number; multiple; end_section\n"), Times(n, "[S?-1]\n"),
                           ""};
         }},
        {"definitions and unknown sections", 2000,
         [](auto n) {
             return TInput{Times(n, "def_section name = 'S#'; end_section\n"), Times(n, "[T?]\n"), ""};
         }},
        {"definitions and keys", 2000,
         [](auto n) {
             return TInput{
                 "def_section name = 'S'; " + Times(n, "def_key name = 'K#'; par = number; end_key\n") + "end_section",
                 "[S]\n" + Times(n, "K? = 1\n"), ""};
         }},
        {"options", 20000,
         [](auto n) {
             return TInput{"def_section name = 'S'; def_key name = 'K'; par = options { " +
                               Times(n, "option = 'o#'; ") + "}; end_key end_section",
                           "[S]\nK = o7\n", ""};
         }},
        {"options and values", 2000,
         [](auto n) {
             return TInput{"def_section name = 'S'; def_key name = 'K'; multiple; par = options { " +
                               Times(n, "option = 'o#'; ") + "}; end_key end_section",
                           "[S]\n" + Times(n, "K = o?\n"), ""};
         }},
        {"nested comments", 200000,
         [](auto n) {
             const std::string comment = Times(n, "(* ") + Times(n, "*) ");
             return TInput{comment + kUnit, comment + "\n[Unit1]\nKey1 = " + comment + "1, a\n", ""};
         }},
        {"comments", 100000,
         [](auto n) {
             return TInput{kUnit, "[Unit1]\n" + Times(n, "(* # *) "), ""};
         }},
        {"long lines", 1000000,
         [](auto n) {
             const std::string text(n, 'x');
             return TInput{kUnit, "[Unit1]\nKey1 = 1, " + text + "\n" + text + " = 1\n[" + text + "]\n", ""};
         }},
        {"long lines of strings", 100000,
         [](auto n) {
             return TInput{kUnit, "[Unit1]\nKey1 = 1" + Times(n, ", 'a, #'") + "\n", ""};
         }},
    };
    return kFamilies;
}

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

    double Exponent() const {
        return std::log(seconds[count - 1] / seconds[0]) / std::log(static_cast<double>(kFactors[count - 1]));
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
    for (const TFamily &family : Families()) {
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
