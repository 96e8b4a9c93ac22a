#include "tools/session/watched_disk.h"

#include <algorithm>
#include <filesystem>

#include "platform/base/file_system_name.h"

namespace {

/// The same for all ways to write the path of one file, links apart.
std::filesystem::path FileOf(std::string_view path) {
    return std::filesystem::absolute(kq_base::LocateFile(path)).lexically_normal();
}

}  // namespace

CWatchedDisk::~CWatchedDisk() { Replace(&disk_); }

void CWatchedDisk::Fail(TFailures &failures, std::string_view path, std::string_view text) {
    std::erase_if(failures, [path](const TFailure &failure) { return FileOf(failure.path) == FileOf(path); });
    if (!text.empty()) {
        failures.push_back({std::string(path), std::string(text)});
    }
}

const CWatchedDisk::TFailure *CWatchedDisk::Find(const TFailures &failures, std::string_view path) {
    const auto found = std::find_if(failures.begin(), failures.end(),
                                    [path](const TFailure &failure) { return FileOf(failure.path) == FileOf(path); });
    return found == failures.end() ? nullptr : &*found;
}

bool CWatchedDisk::Read(std::string_view path, std::string &content, std::string &error) {
    if (const TFailure *failure = Find(failing_loads_, path)) {
        error = failure->text;
        return false;
    }
    return disk_.Read(path, content, error);
}

bool CWatchedDisk::Save(std::string_view path, std::string_view content, std::string &error) {
    const TFailure *failure = Find(failing_saves_, path);
    if (failure != nullptr) {
        error = failure->text;
    }
    const bool ok = failure == nullptr && disk_.Save(path, content, error);
    recorder_.Save(path, ok);
    return ok;
}
