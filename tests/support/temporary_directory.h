#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A directory of its own that is the current one as long as the object lives, and gone with all its files after.
class CTemporaryDirectory {
public:
    CTemporaryDirectory() : before_(std::filesystem::current_path()) {
        std::string name = (std::filesystem::temp_directory_path() / "kq-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            std::abort();
        }
        path_ = name;
        std::filesystem::current_path(path_);
    }
    CTemporaryDirectory(const CTemporaryDirectory &) = delete;
    CTemporaryDirectory &operator=(const CTemporaryDirectory &) = delete;
    ~CTemporaryDirectory() {
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(path_);
    }

private:
    std::filesystem::path before_;
    std::filesystem::path path_;
};

/// The bytes of a file by the file system's name, empty without one.
inline std::string ReadBytes(const std::string &name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::string &name, const std::string &bytes) {
    std::ofstream(name, std::ios::binary) << bytes;
}
