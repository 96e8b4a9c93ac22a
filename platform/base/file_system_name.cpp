#include "platform/base/file_system_name.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "platform/base/code_page.h"
#include "platform/base/paths.h"

namespace kq_base {

namespace {

/// The bytes of the character at the beginning of a text if it is valid UTF-8, else 0.
std::size_t Utf8Length(std::string_view text) {
    const auto byte = [text](std::size_t at) -> std::uint32_t {
        return at < text.size() ? static_cast<std::uint8_t>(text[at]) : 0U;
    };
    const std::uint32_t lead = byte(0);
    if (lead < 0x80) {
        return 1;
    }
    const std::size_t count = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    for (std::size_t at = 1; at < count; ++at) {
        if ((byte(at) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    const bool overlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
    const bool no_character = (lead == 0xED && byte(1) > 0x9F) || (lead == 0xF4 && byte(1) > 0x8F);
    return overlong || no_character ? 0 : count;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = Utf8Length(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string FirstReading(std::string_view name) { return IsUtf8(name) ? std::string(name) : ToUtf8(name); }

std::string OtherReading(std::string_view name) { return IsUtf8(name) ? ToUtf8(name) : std::string(name); }

bool IsThere(const std::string &path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0;
}

/// Appends a name to a path in the reading under which it is there; if neither is, in the first. True if it is there.
bool AppendName(std::string &path, std::string_view name) {
    const std::string first = path + FirstReading(name);
    if (!IsThere(first)) {
        std::string other = path + OtherReading(name);
        if (other != first && IsThere(other)) {
            path = std::move(other);
            return true;
        }
    } else {
        path = first;
        return true;
    }
    path = first;
    return false;
}

/// The name in a directory that equals another but for case; empty if there is none.
std::string FindIgnoringCase(const std::string &directory, std::string_view name) {
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(opendir(directory.empty() ? "." : directory.c_str()), closedir);
    const std::string wanted = FromFileSystem(FirstReading(name));
    std::string found;
    while (const dirent *entry = listing == nullptr ? nullptr : readdir(listing.get())) {
        const std::string_view candidate = entry->d_name;
        if (EqualIgnoringCase(FromFileSystem(candidate), wanted) && (found.empty() || candidate < found)) {
            found = candidate;
        }
    }
    return found;
}

}  // namespace

std::string FromFileSystem(std::string_view name) {
    std::string bytes;
    return FromUtf8(name, bytes) && FirstReading(bytes) == name ? bytes : std::string(name);
}

std::string LocateFile(std::string_view path) {
    std::string text(path.substr(0, path.find('\0')));
    std::replace(text.begin(), text.end(), '\\', '/');
    const std::string_view name = FileNamePart(text);
    const std::string_view directories = std::string_view(text).substr(0, text.size() - name.size());

    std::string located;
    if (IsUtf8(directories) && IsThere(std::string(directories))) {
        located = directories;
    } else {
        std::size_t start = 0;
        while (start < directories.size()) {
            const std::size_t end = directories.find('/', start);
            AppendName(located, directories.substr(start, end - start));
            located += '/';
            start = end + 1;
        }
    }
    const std::string directory = located;
    if (name.empty() || AppendName(located, name)) {
        return located;
    }
    const std::string found = FindIgnoringCase(directory, name);
    return found.empty() ? located : directory + found;
}

}  // namespace kq_base
