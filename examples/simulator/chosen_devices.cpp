#include "chosen_devices.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

#include "channel_numbers.h"
#include "key_values.h"
#include "platform/base/file_system_name.h"
#include "scanner/file_par_scanner.h"
#include "texts.h"

namespace simulator {

namespace {

/// The numbers that a file uses, as far as they can be read.
struct TUsed {
    std::array<bool, kMaxSignals + 1> signals{};
    CChannelNumbers channels;
};

void ReadChannels(par_scanner::CParScanner &scanner, TUsed &used) {
    for (bool there = scanner.FirstKey(); there; there = scanner.NextKey()) {
        if (scanner.KeyName() != "Channels") {
            continue;
        }
        std::string access;
        std::uint32_t count = 1;
        std::uint32_t first = 0;
        CKeyValues values(scanner);
        values.TakeText(access);
        values.TakeNumber(count, 1, kMaxChannelsOfSignal);
        values.TakeNumber(first, 1, 0xFFFFFFFF - kMaxChannelsOfSignal);
        std::uint32_t taken = 0;
        used.channels.Take(first != 0 ? first : used.channels.FreeAfterAll(count), count, taken);
    }
}

bool ReadUsed(const std::string &path, TUsed &used) {
    constexpr std::string_view kName = "Signal";
    par_scanner::CFileParScanner scanner;
    if (!scanner.Init(path.c_str(), 0)) {
        return false;
    }
    for (bool there = scanner.FirstSection(); there; there = scanner.NextSection()) {
        const std::string_view name = scanner.SectionName();
        std::uint32_t number = 0;
        if (name.starts_with(kName) && ReadNumber(name.substr(kName.size()), number) && number <= kMaxSignals) {
            used.signals[number] = true;
            ReadChannels(scanner, used);
        }
    }
    scanner.Done();
    return true;
}

/// The section that makes a device a signal; empty if there is no number left.
std::string SectionText(const TDevice &device, TUsed &used) {
    const auto *const free = std::find(used.signals.begin() + 1, used.signals.end(), false);
    const std::uint32_t first = used.channels.FreeAfterAll(device.channels);
    std::uint32_t taken = 0;
    if (free == used.signals.end() || first == 0 || !used.channels.Take(first, device.channels, taken)) {
        return "";
    }
    const auto number = static_cast<std::size_t>(free - used.signals.begin());
    used.signals[number] = true;
    std::string text = "[Signal" + std::to_string(number) + "]\r\n";
    text.append(device.keys).append("  Channels  = ").append(device.access).append(", ");
    return text + std::to_string(device.channels) + ", " + std::to_string(first) + "\r\n\r\n";
}

}  // namespace

bool AppendDevices(const std::string &path, const std::vector<const TDevice *> &devices) {
    TUsed used;
    if (!ReadUsed(path, used)) {
        return false;
    }
    const std::string located = kq_base::LocateFile(path);
    std::ifstream present(located, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(present), std::istreambuf_iterator<char>()};
    std::string added = text.empty() || text.back() == '\n' ? "" : "\r\n";
    std::string left_out;
    for (const TDevice *device : devices) {
        const std::string section = SectionText(*device, used);
        if (section.empty()) {
            left_out.append(left_out.empty() ? texts::kLeftOut : std::string_view(", ")).append(device->name);
        }
        added += section;
    }
    added += left_out.empty() ? "" : left_out + " *)\r\n";
    std::ofstream file(located, std::ios::app | std::ios::binary);
    file << added;
    file.flush();
    return file.good();
}

}  // namespace simulator
