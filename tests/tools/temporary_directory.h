#pragma once

#include <filesystem>
#include <string>

/// A directory of its own that is the current one as long as the object lives.
class CTemporaryDirectory {
public:
    CTemporaryDirectory() : before_(std::filesystem::current_path()) {
        std::string name = (std::filesystem::temp_directory_path() / "kqcfg-XXXXXX").string();
        if (mkdtemp(name.data()) != nullptr) {
            path_ = name;
            std::filesystem::current_path(path_);
        }
    }
    ~CTemporaryDirectory() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path_);
    }
    CTemporaryDirectory(const CTemporaryDirectory &) = delete;
    CTemporaryDirectory &operator=(const CTemporaryDirectory &) = delete;

private:
    std::filesystem::path before_;
    std::filesystem::path path_;
};

/// The bytes of a file, empty without one.
std::string ReadBytes(const std::string &name);
void WriteBytes(const std::string &name, const std::string &bytes);
