#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/code_page.h"
#include "platform/base/files.h"
#include "platform/base/paths.h"

/// A disk that holds its files in memory and is the library's as long as it lives. Paths are keys as a whole, whatever
/// their case and separators; a directory is there once a file is in it.
class CMemoryDisk : public kq_base::CDisk {
public:
    CMemoryDisk() { Replace(this); }
    CMemoryDisk(const CMemoryDisk &) = delete;
    CMemoryDisk &operator=(const CMemoryDisk &) = delete;
    ~CMemoryDisk() override { Replace(nullptr); }

    struct TFile {
        std::string name;  ///< the file name as it was first written
        std::string content;
    };

    /// Every following operation on the path fails with this text; an empty text lets it work again.
    void Fail(std::string_view path, std::string_view error) { failures_[Key(path)] = error; }
    /// The content of a file, empty without one.
    std::string Content(std::string_view path) const {
        const auto found = files_.find(Key(path));
        return found == files_.end() ? std::string() : found->second.content;
    }
    /// Paths in the order in which they were saved, as they were given.
    const std::vector<std::string> &Saved() const { return saved_; }

    bool Read(std::string_view path, std::string &content, std::string &error) override {
        if (Fails(path, error)) {
            return false;
        }
        content = Content(path);
        return true;
    }
    bool Save(std::string_view path, std::string_view content, std::string &error) override {
        if (Fails(path, error, false)) {
            return false;
        }
        saved_.emplace_back(path);
        files_.try_emplace(Key(path), TFile{std::string(kq_base::FileNamePart(path)), {}}).first->second.content =
            content;
        return true;
    }
    bool Delete(std::string_view path, std::string &error) override {
        return !Fails(path, error) && files_.erase(Key(path)) != 0;
    }
    bool Exists(std::string_view path) override { return files_.contains(Key(path)) || IsDirectory(path); }
    bool IsDirectory(std::string_view path) override {
        const std::string prefix = Key(path) + '/';
        const auto found = files_.lower_bound(prefix);
        return found != files_.end() && found->first.starts_with(prefix);
    }
    bool List(std::string_view directory, std::string_view pattern, std::vector<std::string> &names,
              std::string & /*error*/) override {
        names.clear();
        for (const auto &[key, file] : files_) {
            if (kq_base::DirectoryPart(key) == Key(directory) && kq_base::MatchesPattern(file.name, pattern)) {
                names.push_back(file.name);
            }
        }
        return true;
    }

private:
    static std::string Key(std::string_view path) {
        std::string key = kq_base::ToUpper(path);
        for (char &character : key) {
            character = character == '\\' ? '/' : character;
        }
        while (key.size() > 1 && key.back() == '/') {
            key.pop_back();
        }
        return key;
    }

    bool Fails(std::string_view path, std::string &error, bool missing_fails = true) {
        const auto failure = failures_.find(Key(path));
        if (failure != failures_.end() && !failure->second.empty()) {
            error = failure->second;
            return true;
        }
        const bool missing = missing_fails && !files_.contains(Key(path));
        if (missing) {
            error = "Soubor neexistuje";
        }
        return missing;
    }

    std::map<std::string, TFile> files_;
    std::map<std::string, std::string> failures_;
    std::vector<std::string> saved_;
};
