#include "platform/base/file_error.h"

#include <cerrno>
#include <string_view>

#include "platform/base/texts.h"

namespace kq_base {

namespace {

struct TErrorText {
    int error_number;
    std::string_view text;
};

constexpr TErrorText kTexts[] = {
    {ENOENT, texts::kNoSuchFile},
    {EISDIR, texts::kIsDirectory},
    {ENOTDIR, texts::kPartIsNoDirectory},
    {EACCES, texts::kAccessDenied},
    {EPERM, texts::kAccessDenied},
    {EROFS, texts::kDiskIsReadOnly},
    {ENOSPC, texts::kDiskIsFull},
    {EDQUOT, texts::kQuotaIsUsedUp},
    {EFBIG, texts::kFileIsTooLarge},
    {EOVERFLOW, texts::kFileIsTooLarge},
    {EIO, texts::kDiskError},
    {ENAMETOOLONG, texts::kNameIsTooLong},
    {ELOOP, texts::kLinksGoInCircles},
    {EBUSY, texts::kFileIsInUse},
    {ETXTBSY, texts::kFileIsInUse},
    {EMFILE, texts::kTooManyFiles},
    {ENFILE, texts::kTooManyFiles},
    {ENXIO, texts::kNobodyAtTheOtherEnd},
    {EPIPE, texts::kNobodyAtTheOtherEnd},
    {ENOMEM, texts::kNoMemory},
    {kErrorNoDirectory, texts::kNoSuchDirectory},
    {kErrorNotAFile, texts::kNoRegularFile},
};

}  // namespace

std::string FileErrorText(int error_number) {
    for (const TErrorText &entry : kTexts) {
        if (entry.error_number == error_number) {
            return std::string(entry.text);
        }
    }
    return std::string(texts::kSystemError) + std::to_string(error_number);
}

}  // namespace kq_base
