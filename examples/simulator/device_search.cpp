#include "device_search.h"

#include <chrono>
#include <string>
#include <thread>

#include "platform/os/events.h"
#include "texts.h"

namespace simulator {

namespace {

/// Waits for a device to answer. False if the search is to end.
bool AwaitAnswer(void *cancel) {
    if (cancel == nullptr) {
        std::this_thread::sleep_for(std::chrono::milliseconds(kAnswerTime));
        return true;
    }
    return kq_os::WaitForSingleObject(cancel, kAnswerTime) == kq_os::kWaitTimeout;
}

std::string_view GroupName(std::uint32_t key) {
    for (const TGroup &group : kGroups) {
        if (group.key == key) {
            return group.name;
        }
    }
    return {};
}

}  // namespace

bool SearchDevices(CSearchListener &listener, void *cancel) {
    std::uint32_t group = kRootKey;
    std::size_t address = 0;
    std::string last;
    for (const TDevice &device : kDevices) {
        std::string line(texts::kSearching);
        line.append(std::to_string(++address)).append(texts::kOf).append(std::to_string(kDevices.size()));
        listener.Progress("", line, last);
        if (!AwaitAnswer(cancel)) {
            break;
        }
        if (device.group != group) {
            group = device.group;
            listener.AddItem(kRootKey, group, GroupName(group), TItemFlags::kCheckMark);
        }
        listener.AddItem(group, device.key, device.name, device.flags);
        last = std::string(texts::kLastFound).append(device.name);
    }
    return !last.empty();
}

}  // namespace simulator
