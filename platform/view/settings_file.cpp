// Values that could not be written yet are kept apart from those in the file: whenever the file is read again, because
// another process wrote it, they are put over its values.

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <tuple>
#include <utility>

#include "platform/base/descriptor.h"
#include "platform/base/read_file.h"
#include "platform/view/settings.h"
#include "platform/view/settings_text.h"

namespace {

namespace fs = std::filesystem;

/// What differs between two contents of a file that was replaced.
using TStamp = std::tuple<dev_t, ino_t, off_t, time_t, long>;

TStamp StampOf(const std::string &path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

/// Keeps other processes from writing the files of a directory between reading and replacing one. If one is stopped
/// while it holds the lock, we wait for two seconds only: a lost value is better than a window that does not
/// answer.
class CDirectoryLock {
public:
    explicit CDirectoryLock(const std::string &directory)
        : directory_(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        constexpr timespec kPause = {.tv_sec = 0, .tv_nsec = 2'000'000};
        for (int attempt = 0; attempt < 1000 && flock(directory_.Number(), LOCK_EX | LOCK_NB) != 0; ++attempt) {
            if (errno != EWOULDBLOCK) {
                return;
            }
            nanosleep(&kPause, nullptr);
        }
    }

    void Sync() const { fsync(directory_.Number()); }

private:
    kq_base::CDescriptor directory_;
};

bool WriteAndSync(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = write(file, content.data(), content.size());
        if (count > 0) {
            content.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return fsync(file) == 0;
}

/// Puts a new file in the place of another, which keeps its permissions.
bool ReplaceFile(const std::string &path, std::string_view content) {
    std::string temporary = path + ".XXXXXX";
    const kq_base::CDescriptor file(mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.IsOpen()) {
        return false;
    }
    struct stat status = {};
    const bool ready = WriteAndSync(file.Number(), content) &&
                       (stat(path.c_str(), &status) != 0 || fchmod(file.Number(), status.st_mode & 07777U) == 0);
    if (!ready || rename(temporary.c_str(), path.c_str()) != 0) {
        unlink(temporary.c_str());
        return false;
    }
    return true;
}

/// The file to be replaced, with its directory: a link to it stays a link.
fs::path BehindLinks(const std::string &path) {
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    return error ? fs::absolute(path, error) : target;
}

}  // namespace

struct CFileSettings::TState {
    std::string path;
    bool was_read = false;
    TStamp stamp;
    CMemorySettings values;
    CMemorySettings unsaved;

    /// Reads the file, if it isn't the one that was read last.
    void Update();
    void Read();
    bool Save();
};

void CFileSettings::TState::Update() {
    if (!std::exchange(was_read, true) || StampOf(path) != stamp) {
        Read();
    }
}

void CFileSettings::TState::Read() {
    stamp = StampOf(path);
    std::string text;
    CMemorySettings::TPaths paths;
    if (kq_base::ReadFile(path, text) == 0) {
        ParseSettings(text, paths);
    }
    values = CMemorySettings();
    for (const auto &source : {std::cref(paths), std::cref(unsaved.Paths())}) {
        for (const auto &[below, named] : source.get()) {
            for (const auto &[name, value] : named) {
                values.Write(below, name, value);
            }
        }
    }
}

bool CFileSettings::TState::Save() {
    const fs::path file = BehindLinks(path);
    std::error_code error;
    if (path.empty() || (fs::create_directories(file.parent_path(), error), error)) {
        return false;
    }
    const CDirectoryLock lock(file.parent_path().string());
    Read();
    if (!ReplaceFile(file.string(), SettingsText(values.Paths()))) {
        return false;
    }
    lock.Sync();
    stamp = StampOf(path);
    return true;
}

CFileSettings::CFileSettings(std::string_view path) : state_(std::make_unique<TState>()) { state_->path = path; }

CFileSettings::~CFileSettings() = default;

std::string CFileSettings::DefaultPath() {
    constexpr std::string_view kFile = "/kq_pdt/settings";
    const char *const configuration = std::getenv("XDG_CONFIG_HOME");
    if (configuration != nullptr && *configuration == '/') {
        return configuration + std::string(kFile);
    }
    const char *home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') {
        const passwd *const user = getpwuid(getuid());
        home = user == nullptr ? nullptr : user->pw_dir;
    }
    return home == nullptr ? std::string() : home + std::string("/.config").append(kFile);
}

bool CFileSettings::HasPath(std::string_view path) const {
    if (!state_->was_read) {
        state_->Update();
    }
    return state_->values.HasPath(path);
}

bool CFileSettings::Read(std::string_view path, std::string_view name, std::int64_t &value) const {
    if (!state_->was_read) {
        state_->Update();
    }
    return state_->values.Read(path, name, value);
}

void CFileSettings::Write(std::string_view path, std::string_view name, std::int64_t value) {
    state_->Update();
    std::int64_t present = 0;
    if (state_->values.Read(path, name, present) && present == value) {
        return;
    }
    state_->values.Write(path, name, value);
    state_->unsaved.Write(path, name, value);
    if (state_->Save()) {
        state_->unsaved = CMemorySettings();
    }
}
