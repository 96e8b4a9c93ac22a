#include "platform/base/files.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include "platform/base/code_page.h"
#include "platform/base/file_error.h"
#include "platform/base/file_system_name.h"
#include "platform/base/paths.h"
#include "platform/base/read_file.h"
#include "platform/base/save_file.h"

namespace kq_base {

CDisk::~CDisk() = default;

namespace {

bool Status(std::string_view path, struct stat &status) { return stat(LocateFile(path).c_str(), &status) == 0; }

class CRealDisk : public CDisk {
public:
    bool Read(std::string_view path, std::string &content, std::string &error) override {
        return Report(ReadFile(LocateFile(path), content), error);
    }

    bool Save(std::string_view path, std::string_view content, std::string &error) override {
        return SaveFile(LocateFile(path), content, error);
    }

    bool Delete(std::string_view path, std::string &error) override {
        return Report(unlink(LocateFile(path).c_str()) == 0 ? 0 : errno, error);
    }

    bool Exists(std::string_view path) override {
        struct stat status = {};
        return Status(path, status);
    }

    bool IsDirectory(std::string_view path) override {
        struct stat status = {};
        return Status(path, status) && S_ISDIR(status.st_mode);
    }

    bool List(std::string_view directory, std::string_view pattern, std::vector<std::string> &names,
              std::string &error) override;

private:
    static bool Report(int error_number, std::string &error) {
        if (error_number != 0) {
            error = FileErrorText(error_number);
        }
        return error_number == 0;
    }
};

bool CRealDisk::List(std::string_view directory, std::string_view pattern, std::vector<std::string> &names,
                     std::string &error) {
    names.clear();
    const std::string located = directory.empty() ? std::string(".") : LocateFile(directory);
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(opendir(located.c_str()), closedir);
    if (listing == nullptr) {
        return Report(errno == ENOENT ? kErrorNoDirectory : errno, error);
    }
    std::vector<std::pair<std::string, std::string>> found;
    for (;;) {
        errno = 0;
        const dirent *entry = readdir(listing.get());
        if (entry == nullptr) {
            break;
        }
        std::string name = FromFileSystem(entry->d_name);
        // A backslash separates in a library path, so such a name couldn't be opened.
        if (!MatchesPattern(name, pattern) || name.find('\\') != std::string::npos) {
            continue;
        }
        struct stat status = {};
        if (fstatat(dirfd(listing.get()), entry->d_name, &status, 0) == 0 && !S_ISDIR(status.st_mode)) {
            std::string capitals = ToUpper(name);
            found.emplace_back(std::move(capitals), std::move(name));
        }
    }
    if (errno != 0) {
        return Report(errno, error);
    }
    std::sort(found.begin(), found.end());
    for (auto &[capitals, name] : found) {
        names.push_back(std::move(name));
    }
    return true;
}

CRealDisk &RealDisk() {
    static CRealDisk disk;
    return disk;
}

CDisk *&Replacement() {
    static CDisk *disk = nullptr;
    return disk;
}

}  // namespace

CDisk &CDisk::Current() { return Replacement() != nullptr ? *Replacement() : RealDisk(); }

void CDisk::Replace(CDisk *disk) { Replacement() = disk; }

}  // namespace kq_base
