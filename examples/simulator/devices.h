#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/base/code_page.h"

/// The devices that the search comes across, in the order of their addresses.
namespace simulator {

using namespace kq_base::literals;

/// What an item of the tree can do; the host's numbers.
enum class TItemFlags : std::uint32_t {
    kPlain = 0,
    kCheckMark = 2,
    kExclusive = 4,  ///< a check mark that only one among its siblings has
};

inline constexpr std::uint32_t kRootKey = 0;

/// The parent of some devices in the tree. To check a group of check marks is to check all of its devices.
struct TGroup {
    std::uint32_t key;
    std::string_view name;
};

struct TDevice {
    std::uint32_t group;
    std::uint32_t key;
    TItemFlags flags;
    std::string_view name;
    std::string_view keys;  ///< of the section that makes this device a signal
    std::string_view access;
    std::uint32_t channels;
};

inline constexpr std::array kGroups = {
    TGroup{100, "Sběrnice čidel"_cp},
    TGroup{200, "Měřicí karta, jeden rozsah"_cp},
};

inline constexpr std::array kDevices = {
    TDevice{100, 101, TItemFlags::kCheckMark, "Teploměr pece"_cp, "  Shape     = SINE, 400\r\n  Limits    = 900\r\n",
            "READ", 2},
    TDevice{100, 102, TItemFlags::kCheckMark, "Hladina nádrže"_cp, "  Shape     = RAMP, 1000\r\n  Limits    = 100\r\n",
            "READ", 1},
    TDevice{100, 103, TItemFlags::kCheckMark, "Koncové spínače"_cp, "  Shape     = SQUARE, 40, 50\r\n", "READ", 8},
    TDevice{100, 104, TItemFlags::kCheckMark, "Čítač kusů"_cp, "  Shape     = RANDOM\r\n  Limits    = 5000\r\n", "READ",
            1},
    TDevice{100, 105, TItemFlags::kCheckMark, "Ventily"_cp, "  Shape     = SQUARE, 60, 30\r\n", "READWRITE", 4},
    TDevice{200, 201, TItemFlags::kExclusive, "Rozsah 10"_cp, "  Shape     = SINE, 50\r\n  Limits    = 10\r\n", "READ",
            4},
    TDevice{200, 202, TItemFlags::kExclusive, "Rozsah 100"_cp, "  Shape     = SINE, 50\r\n  Limits    = 100\r\n",
            "READ", 4},
    TDevice{200, 203, TItemFlags::kExclusive, "Rozsah 1000"_cp, "  Shape     = SINE, 50\r\n  Limits    = 1000\r\n",
            "READ", 4},
};

}  // namespace simulator
