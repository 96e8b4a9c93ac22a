#include "platform/base/read_file.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <exception>

#include "platform/base/descriptor.h"
#include "platform/base/files.h"

namespace kq_base {

namespace {

constexpr std::size_t kFirstPiece = std::size_t{64} << 10U;

/// One piece, once it has come. The count, 0 at the end, -1 with errno after a failure.
ssize_t ReadPiece(int descriptor, char *target, std::size_t size) {
    for (;;) {
        const ssize_t count = read(descriptor, target, size);
        if (count >= 0) {
            return count;
        }
        if (errno == EAGAIN) {
            pollfd waiting = {descriptor, POLLIN, 0};
            poll(&waiting, 1, -1);
        } else if (errno != EINTR) {
            return -1;
        }
    }
}

/// Reads to the end. The first piece should be one byte above the expected size: then the end shows without growing.
int ReadToEnd(int descriptor, std::size_t first_piece, std::size_t limit, std::string &content) {
    std::size_t used = 0;
    content.resize(std::min(first_piece, limit));
    for (;;) {
        if (used == content.size()) {
            if (used == limit) {
                char beyond = 0;
                const ssize_t more = ReadPiece(descriptor, &beyond, 1);
                return more < 0 ? errno : more > 0 ? EFBIG : 0;
            }
            content.resize(used > limit / 2 ? limit : used * 2);
        }
        const ssize_t count = ReadPiece(descriptor, content.data() + used, content.size() - used);
        if (count < 0) {
            return errno;
        }
        if (count == 0) {
            content.resize(used);
            return 0;
        }
        used += static_cast<std::size_t>(count);
    }
}

}  // namespace

int ReadFile(const std::string &path, std::string &content) {
    const CDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat status = {};
    if (!file.IsOpen() || fstat(file.Number(), &status) != 0) {
        return errno;
    }
    if (S_ISDIR(status.st_mode)) {
        return EISDIR;
    }
    const std::uint64_t max_text = std::min<std::uint64_t>(CDisk::kMaxSize, content.max_size());
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > max_text) {
        return EFBIG;
    }
    try {
        if (S_ISREG(status.st_mode)) {
            const auto first_piece = std::max<std::size_t>(static_cast<std::size_t>(size) + 1, 4096);
            return ReadToEnd(file.Number(), first_piece, static_cast<std::size_t>(max_text), content);
        }
        const int error = ReadToEnd(file.Number(), kFirstPiece, kMaxStreamSize, content);
        return error == 0 && content.empty() && S_ISFIFO(status.st_mode) ? ENXIO : error;
    } catch (const std::exception &) {
        return ENOMEM;
    }
}

}  // namespace kq_base
