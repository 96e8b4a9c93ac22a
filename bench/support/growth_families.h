#pragma once

/// The families of inputs whose growth is measured: for each n a template, a parameter file and a driver map file.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kq_bench {

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
inline std::string Times(std::uint32_t n, std::string_view pattern) {
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
inline std::string Ranges(std::uint32_t n, std::string_view order, int length) {
    std::string text = "begin\n";
    for (std::uint32_t at = 0; at < n; ++at) {
        const std::uint64_t place = order == "up" ? at : order == "down" ? n - 1 - at : std::uint64_t{at} * 7919U % n;
        const std::uint64_t first = 10 * place + 1;
        text += std::to_string(first) + " - " + std::to_string(first + static_cast<std::uint64_t>(length) - 1) +
                (place % 2 == 0 ? " real input\n" : " boolean output\n");
    }
    return text + "end.\n";
}

inline std::string NestedRanges(std::uint32_t n) {
    std::string text = "begin\n";
    for (std::uint32_t at = 1; at <= n; ++at) {
        text += std::to_string(at) + " - " + std::to_string(1000000 - at) + " real input\n";
    }
    return text + "end.\n";
}

inline const std::string kUnit =
    "def_section name = 'Unit' + number; multiple; "
    "def_key name = 'Key' + number; multiple; par = number; par = string; end_key end_section ";
inline const std::string kSlot =
    "def_section name = 'Slot' + number; multiple; "
    "def_key name = 'Meter'; par = number { id = %m% }; end_key end_section "
    "def_section name = 'Meter' + %m%; depend_on = %m%; "
    "def_key name = 'Key'; par = number; end_key end_section ";
inline const std::string kNamed =
    "def_section name = 'Slot' + number; multiple; "
    "def_key name = 'Meter'; par = string { id = %m% }; end_key end_section "
    "def_section name = %m%; depend_on = %m%; "
    "def_key name = 'Key'; par = number; end_key end_section ";
inline const std::string kPublishing =
    "def_section name = 'Meter' + number { id = %m% }; multiple; def_key name = 'Key'; par = number; end_key "
    "end_section ";
inline const std::string kShowing =
    "def_section name = 'Port'; def_key name = 'Unit'; par = number { id = %m% }; end_key "
    "end_section def_section name = 'Meter' + %m% + '-' + number; multiple; "
    "def_key name = 'Key'; par = number; end_key end_section ";
inline const std::string kPort =
    "def_section name = 'Port'; required; def_key name = 'Unit'; par = number { id = %m% }; end_key end_section ";
inline const std::string kBlock =
    "def_section name = 'Unit'; def_key name = 'Block'; multiple; channels; "
    "par = number { ch_from }; par = number { ch_to }; "
    "par = string { ch_type = real; ch_direction = input }; end_key end_section ";
inline const std::string kGroup =
    "def_section name = 'Unit'; def_key name = 'Group'; multiple; var %f%; "
    "par = number { id = %f% }; channels_group { ch_from = %f%; ch_to = %f% + 3; type true, real; "
    "direction true, input; }; end_key end_section ";

inline std::string Blocks(std::uint32_t n, std::string_view order) {
    std::string text = "[Unit]\n";
    for (std::uint32_t at = 0; at < n; ++at) {
        const std::uint64_t place = order == "up" ? at : order == "down" ? n - 1 - at : std::uint64_t{at} * 7919U % n;
        text += "Block = " + std::to_string(10 * place + 3) + ", " + std::to_string(10 * place + 5) + ", x\n";
    }
    return text;
}

inline const std::vector<TFamily> &GrowthFamilies() {
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
        {"values too many", 100000,
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
        {"dependent by number", 10000,
         [](auto n) {
             return TInput{kSlot, Times(n, "[Slot#]\nMeter = #\n") + Times(n, "[Meter#]\nKey = 1\n"), ""};
         }},
        {"dependent by number, first", 10000,
         [](auto n) {
             return TInput{kSlot, Times(n, "[Meter?]\nKey = 1\n") + Times(n, "[Slot#]\nMeter = #\n"), ""};
         }},
        {"dependent by number, not there", 10000,
         [](auto n) {
             return TInput{kSlot, Times(n, "[Slot#]\nMeter = #\n"), ""};
         }},
        {"dependent by number, with a number", 4000,
         [](auto n) {
             return TInput{
                 "def_section name = 'Slot' + number; multiple; def_key name = 'Meter'; "
                 "par = number { id = %m% }; end_key end_section def_section name = 'Meter' + %m% + '-' + "
                 "number; multiple; depend_on = %m%; def_key name = 'Key'; par = number; end_key end_section",
                 Times(n, "[Slot#]\nMeter = #\n[Meter#-1]\nKey = 1\n"), ""};
         }},
        {"dependent by text", 10000,
         [](auto n) {
             return TInput{kNamed, Times(n, "[Slot#]\nMeter = M#\n") + Times(n, "[M#]\nKey = 1\n"), ""};
         }},
        {"dependent by text, not there", 10000,
         [](auto n) {
             return TInput{kNamed, Times(n, "[Slot#]\nMeter = M#\n"), ""};
         }},
        {"dependent sections without a source", 10000,
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
        {"required sections", 8000,
         [](auto n) {
             return TInput{Times(n,
                                 "def_section name = 'S#'; required; def_key name = 'K'; par = number; end_key "
                                 "end_section\n"),
                           Times(n, "[S#]\nK = 1\n"), ""};
         }},
        {"required sections, missing", 8000,
         [](auto n) {
             return TInput{Times(n,
                                 "def_section name = 'S#'; required; def_key name = 'K'; par = number; end_key "
                                 "end_section\n"),
                           "", ""};
         }},
        {"required sections, missing, that publish", 8000,
         [](auto n) {
             return TInput{Times(n,
                                 "def_section name = 'S#'; required; def_key name = 'K'; par = number { id = %v#% }; "
                                 "end_key end_section\n"),
                           "", ""};
         }},
        {"sections that read one variable", 4000,
         [](auto n) {
             return TInput{kPort + Times(n,
                                         "def_section name = 'S#'; def_key name = 'K'; "
                                         "par = number { enable_if %m% = 1 }; end_key end_section\n"),
                           Times(n, "[S#]\nK = 1\n"), ""};
         }},
        {"keys that read one variable", 4000,
         [](auto n) {
             return TInput{kPort + "def_section name = 'S'; " +
                               Times(n, "def_key name = 'K#'; par = number { enable_if %m% = 1 }; end_key\n") +
                               "end_section",
                           "[S]\n" + Times(n, "K# = 1\n"), ""};
         }},
        {"groups", 10000,
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
        {"map overlapping", 40000,
         [](auto n) {
             return TInput{kBlock, "", Ranges(n, "up", 12)};
         }},
        {"map overlapping, mixed", 40000,
         [](auto n) {
             return TInput{kBlock, "", Ranges(n, "mixed", 35)};
         }},
        {"map of equal ranges", 40000,
         [](auto n) {
             return TInput{kBlock, "", "begin\n" + Times(n, "1 - 9 real input\n") + "end.\n"};
         }},
        {"map of nested ranges", 40000,
         [](auto n) {
             return TInput{kBlock, "", NestedRanges(n)};
         }},
        {"map under one block", 40000,
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
        {"definitions and sections", 8000,
         [](auto n) {
             return TInput{Times(n, "def_section name = 'S#'; def_key name = 'K'; par = number; end_key end_section\n"),
                           Times(n, "[S?]\nK = 1\n"), ""};
         }},
        {"definitions with a number and sections", 8000,
         [](auto n) {
             return TInput{Times(n, "def_section name = 'S#-' + number; multiple; end_section\n"), Times(n, "[S?-1]\n"),
                           ""};
         }},
        {"definitions and unknown sections", 8000,
         [](auto n) {
             return TInput{Times(n, "def_section name = 'S#'; end_section\n"), Times(n, "[T?]\n"), ""};
         }},
        {"definitions and keys", 8000,
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
        {"long lines", 200000,
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

}  // namespace kq_bench
