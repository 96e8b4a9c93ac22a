#include "tools/console/output.h"

#include <cerrno>
#include <cstddef>
#include <cstring>

namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 16U;

}  // namespace

void COutput::Write(std::string_view text) {
    if (failed_) {
        return;
    }
    pending_ += text;
    if (pending_.size() >= kPieceSize) {
        Flush();
    }
}

bool COutput::Finish(std::string &reason) {
    Flush();
    reason = reason_;
    return !failed_;
}

void COutput::Flush() {
    if (failed_) {
        return;
    }
    errno = 0;
    stream_.write(pending_.data(), static_cast<std::streamsize>(pending_.size()));
    stream_.flush();
    if (!stream_) {
        failed_ = true;
        reason_ = errno != 0 ? std::strerror(errno) : "the write failed";
    }
    pending_.clear();
}
