#include "tools/console/joint_save.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/base/code_page.h"
#include "platform/base/file_error.h"
#include "tools/console/diagnostics.h"
#include "tools/console/files.h"

namespace {

namespace fs = std::filesystem;

/// 0, or why a save would fail that can be known without writing.
int ErrorAhead(const std::string &name) {
    std::error_code ignored;
    const fs::file_status status = fs::status(name, ignored);
    if (fs::is_directory(status)) {
        return EISDIR;
    }
    if (fs::exists(status)) {
        return access(name.c_str(), W_OK) == 0 ? 0 : errno;
    }
    const std::string directory = fs::path(name).parent_path().string();
    if (access(directory.empty() ? "." : directory.c_str(), W_OK | X_OK) == 0) {
        return 0;
    }
    return errno == ENOENT ? kq_base::kErrorNoDirectory : errno;
}

/// Anything but a file, such as a pipe, keeps what is written into it.
bool CanBeTakenBack(const std::string &name) {
    std::error_code ignored;
    const fs::file_status status = fs::status(name, ignored);
    return !fs::exists(status) || fs::is_regular_file(status);
}

}  // namespace

bool CJointSave::Save() {
    for (const TFile &file : files_) {
        if (const int error = ErrorAhead(file.name); error != 0) {
            PrintError(console_, file.name, kq_base::ToUtf8(kq_base::FileErrorText(error)));
            return false;
        }
    }
    for (; saved_ < files_.size(); ++saved_) {
        if (!SaveOne(files_[saved_])) {
            TakeBack();
            return false;
        }
    }
    return true;
}

bool CJointSave::SaveOne(TFile &file) {
    std::ifstream old_file;
    if (CanBeTakenBack(file.name)) {
        old_file.open(file.name, std::ios::binary);
    }
    if (old_file.is_open()) {
        file.old_text.emplace(std::istreambuf_iterator<char>(old_file), std::istreambuf_iterator<char>());
    }
    return SaveText(console_, file.name, file.text);
}

void CJointSave::TakeBack() {
    while (saved_ > 0) {
        const TFile &file = files_[--saved_];
        if (CanBeTakenBack(file.name)) {
            TakeBackOne(file);
        }
    }
}

void CJointSave::TakeBackOne(const TFile &file) {
    if (file.old_text) {
        SaveText(console_, file.name, *file.old_text);
        return;
    }
    std::error_code error;
    fs::remove(fs::canonical(file.name, error), error);
    if (error) {
        PrintError(console_, file.name, error.message());
    }
}
