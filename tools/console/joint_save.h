#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tools/console/console.h"

/// Files of which all are saved or none. The reason of a failure is printed.
class CJointSave {
public:
    explicit CJointSave(TConsole &console) : console_(console) {}

    void Add(std::string name, std::string text) { files_.push_back({std::move(name), std::move(text), std::nullopt}); }
    /// Saves all files. After a failure each is what it was.
    bool Save();
    /// Puts back what the files were before Save. A device or a pipe keeps what it was given.
    void TakeBack();

private:
    struct TFile {
        std::string name;
        std::string text;
        std::optional<std::string> old_text;  ///< none if there was no file
    };

    bool SaveOne(TFile &file);
    void TakeBackOne(const TFile &file);

    TConsole &console_;
    std::vector<TFile> files_;
    std::size_t saved_ = 0;  ///< so many from the front
};
