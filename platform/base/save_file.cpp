// A longer text is written from its end: what follows the old content first. If the disk is full it shows there,
// while the old bytes are still untouched, and cutting the file to its old size is all that is left to do. Only
// then is the old content overwritten, which needs no further space. A shorter text gives space back last of all.

#include "platform/base/save_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>

#include "platform/base/descriptor.h"
#include "platform/base/file_error.h"
#include "platform/base/paths.h"
#include "platform/base/read_file.h"
#include "platform/base/texts.h"

namespace kq_base {

CSaveTarget::~CSaveTarget() = default;

namespace {

int WriteAndSync(CSaveTarget &file, std::uint64_t offset, std::string_view bytes) {
    const int error = file.WriteAt(offset, bytes);
    return error != 0 ? error : file.Sync();
}

int ResizeAndSync(CSaveTarget &file, std::uint64_t size) {
    const int error = file.Resize(size);
    return error != 0 ? error : file.Sync();
}

/// Keeps the signals that a write may raise (file size limit, closed pipe) from ending the process: the write's error
/// number says the same.
class CHeldSignals {
public:
    CHeldSignals() {
        sigemptyset(&signals_);
        sigaddset(&signals_, SIGXFSZ);
        sigaddset(&signals_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        for (const int number : {SIGXFSZ, SIGPIPE}) {
            if (sigismember(&pending, number) == 1) {
                sigdelset(&signals_, number);
            }
        }
        pthread_sigmask(SIG_BLOCK, &signals_, &mask_before_);
    }
    CHeldSignals(const CHeldSignals &) = delete;
    CHeldSignals &operator=(const CHeldSignals &) = delete;
    ~CHeldSignals() {
        const timespec at_once = {};
        while (sigtimedwait(&signals_, nullptr, &at_once) > 0) {
        }
        pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr);
    }

private:
    sigset_t signals_ = {};
    sigset_t mask_before_ = {};
};

/// Writes all bytes; pass gives what one system call writes of them.
template <typename TPass>
int WriteAll(std::string_view bytes, TPass pass) {
    while (!bytes.empty()) {
        const ssize_t count = pass(bytes);
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0) {
            return EIO;
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

class COpenFile : public CSaveTarget {
public:
    explicit COpenFile(int descriptor) : descriptor_(descriptor) {}

    int WriteAt(std::uint64_t offset, std::string_view bytes) override {
        return WriteAll(bytes, [this, &offset](std::string_view rest) {
            const ssize_t count = pwrite(descriptor_, rest.data(), rest.size(), static_cast<off_t>(offset));
            offset += count > 0 ? static_cast<std::uint64_t>(count) : 0;
            return count;
        });
    }

    int Resize(std::uint64_t size) override {
        return ftruncate(descriptor_, static_cast<off_t>(size)) == 0 ? 0 : errno;
    }

    /// A file system on a network may report a failure only when a descriptor is closed, so a second one is.
    int Sync() override {
        if (fsync(descriptor_) != 0 && errno != EINVAL) {
            return errno;
        }
        const int second = dup(descriptor_);
        return second < 0 || close(second) == 0 ? 0 : errno;
    }

private:
    int descriptor_;
};

/// Syncs the entry of a new file. A directory that may not be read, or whose file system knows no such sync, counts as
/// synced.
int SyncDirectory(std::string_view directory) {
    const std::string path(directory.empty() ? "." : directory);
    const CDescriptor opened(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return !opened.IsOpen() || fsync(opened.Number()) == 0 || errno == EINVAL ? 0 : errno;
}

TSaveResult MakeFile(const std::string &path, std::string_view content) {
    const CDescriptor made(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666));
    if (!made.IsOpen()) {
        return {errno == ENOENT ? kErrorNoDirectory : errno, 0};
    }
    // A link that led nowhere stays; it is the file at its end that was made.
    char *resolved = realpath(path.c_str(), nullptr);
    const std::string file_path = resolved == nullptr ? path : resolved;
    std::free(resolved);

    COpenFile file(made.Number());
    TSaveResult result = Overwrite(file, {}, content);
    if (result.error == 0) {
        result.error = SyncDirectory(DirectoryPart(file_path));
    }
    if (result.error != 0) {
        result.restore_error = unlink(file_path.c_str()) == 0 ? 0 : errno;
    }
    return result;
}

TSaveResult ReplaceContent(const std::string &path, std::string_view content) {
    std::string old_content;
    if (const int error = ReadFile(path, old_content); error != 0) {
        return {error, 0};
    }
    if (old_content == content) {
        return {};
    }
    const CDescriptor opened(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!opened.IsOpen()) {
        return {errno, 0};
    }
    COpenFile file(opened.Number());
    return Overwrite(file, old_content, content);
}

/// Gives the bytes to a device or a pipe. A pipe without a reader fails at once.
TSaveResult Pour(const std::string &path, std::string_view content) {
    const CDescriptor opened(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!opened.IsOpen() || fcntl(opened.Number(), F_SETFL, 0) != 0) {
        return {errno, 0};
    }
    return {WriteAll(content,
                     [&opened](std::string_view rest) { return write(opened.Number(), rest.data(), rest.size()); }),
            0};
}

TSaveResult Save(const std::string &path, std::string_view content) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return errno == ENOENT ? MakeFile(path, content) : TSaveResult{errno, 0};
    }
    if (S_ISREG(status.st_mode)) {
        return ReplaceContent(path, content);
    }
    if (S_ISCHR(status.st_mode) || S_ISFIFO(status.st_mode)) {
        return Pour(path, content);
    }
    return {S_ISDIR(status.st_mode) ? EISDIR : kErrorNotAFile, 0};
}

}  // namespace

TSaveResult Overwrite(CSaveTarget &file, std::string_view old_content, std::string_view content) {
    TSaveResult result;
    const std::size_t old_size = old_content.size();
    if (content.size() > old_size) {
        result.error = WriteAndSync(file, old_size, content.substr(old_size));
        if (result.error != 0) {
            result.restore_error = ResizeAndSync(file, old_size);
            return result;
        }
    }
    if (const std::string_view head = content.substr(0, old_size); !head.empty()) {
        result.error = WriteAndSync(file, 0, head);
    }
    if (result.error == 0 && content.size() < old_size) {
        result.error = ResizeAndSync(file, content.size());
    }
    if (result.error != 0) {
        const int resize_error = file.Resize(old_size);
        const int write_error = WriteAndSync(file, 0, old_content);
        result.restore_error = resize_error != 0 ? resize_error : write_error;
    }
    return result;
}

bool SaveFile(const std::string &path, std::string_view content, std::string &error) {
    const CHeldSignals held;
    const TSaveResult result = Save(path, content);
    if (result.error == 0) {
        return true;
    }
    error = FileErrorText(result.error);
    if (result.restore_error != 0) {
        error += texts::kContentNotRestored;
        error += FileErrorText(result.restore_error);
    }
    return false;
}

}  // namespace kq_base
