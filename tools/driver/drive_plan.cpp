#include "tools/driver/drive_plan.h"

#include <charconv>

#include "platform/base/code_page.h"
#include "platform/base/file_system_name.h"
#include "platform/base/paths.h"

namespace {

/// Reads CHANNEL:TYPE.
bool ReadPoint(std::string_view text, TDrivePoint &point, std::string &reason) {
    const std::size_t colon = text.find(':');
    const std::string_view number = text.substr(0, colon);
    const auto [stop, error] = std::from_chars(number.data(), number.data() + number.size(), point.channel);
    if (colon == std::string_view::npos || error != std::errc() || stop != number.data() + number.size()) {
        reason = "a channel is written as CHANNEL:TYPE, with a plain number of 32 bits";
        return false;
    }
    if (!point.value.SetType(text.substr(colon + 1))) {
        reason =
            "\"" + std::string(text.substr(colon + 1)) +
            "\" is no type; types are boolean, shortcard, cardinal, longcard, shortint, integer, longint, shortreal, "
            "real, string and buffer";
        return false;
    }
    return true;
}

bool AddWrite(const std::string &text, std::deque<TDrivePoint> &writes, std::string &reason) {
    const std::size_t equal = text.find('=');
    if (equal == std::string::npos) {
        reason = "a channel to write needs a value: CHANNEL:TYPE=VALUE";
        return false;
    }
    TDrivePoint &point = writes.emplace_back();
    return ReadPoint(text.substr(0, equal), point, reason) &&
           point.value.Read(std::string_view(text).substr(equal + 1), reason);
}

bool FindName(const TDriveArguments &arguments, std::string_view module, std::string &name, std::string &reason) {
    if (!arguments.name) {
        const std::string file = kq_base::FromFileSystem(kq_base::FileNamePart(module));
        name = file.substr(0, file.rfind('.')).substr(0, kLongestDriverName);
        return true;
    }
    if (!kq_base::FromUtf8(*arguments.name, name)) {
        reason = "--name: this isn't UTF-8, or holds a character that code page 1250 lacks";
        return false;
    }
    if (name.size() > kLongestDriverName) {
        reason = "--name: a driver's name has at most 63 characters";
        return false;
    }
    return true;
}

}  // namespace

bool MakeDrivePlan(const TDriveArguments &arguments, std::string_view module, TDrivePlan &plan, std::string &reason) {
    for (const std::string &text : arguments.reads) {
        if (!ReadPoint(text, plan.reads.emplace_back(), reason)) {
            reason.insert(0, "--read " + text + ": ");
            return false;
        }
    }
    for (const std::string &text : arguments.writes) {
        if (!AddWrite(text, plan.writes, reason)) {
            reason.insert(0, "--write " + text + ": ");
            return false;
        }
    }
    return FindName(arguments, module, plan.name, reason);
}
