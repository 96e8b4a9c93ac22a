#pragma once

/// Parameter files as plants have them: the examples' files over and over, with other names and numbers each time.

#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kq_bench {

/// What is added to some of the lines.
struct TPlantLines {
    std::string_view addition;     ///< a value, or what else may follow the last one
    int percent = 0;               ///< of the lines with values that get it
    bool carriage_returns = true;  ///< lines end with CRLF, as in the examples
};

/// The same numbers in every run.
class CNumbers {
public:
    std::uint32_t Below(std::uint32_t limit) {
        state_ = state_ * 1664525U + 1013904223U;
        return (state_ >> 8U) % limit;
    }

private:
    std::uint32_t state_ = 12345;
};

/// Makes the text line by line.
class CPlantText {
public:
    /// folder has the examples.
    CPlantText(const std::string &folder, const TPlantLines &lines) : added_(lines) {
        for (const std::string_view name : {"modbus", "meters", "simulator"}) {
            const std::filesystem::path path = std::filesystem::path(folder) / name / (std::string(name) + ".par");
            std::ifstream file(path);
            if (!file) {
                throw std::runtime_error("cannot read " + path.string());
            }
            for (std::string line; std::getline(file, line);) {
                lines_.push_back(line.substr(0, line.find('\r')));
            }
        }
    }

    /// At least size characters.
    std::string Make(std::size_t size) {
        std::string text;
        for (int round = 1; text.size() < size; ++round) {
            for (const std::string &line : lines_) {
                AddLine(line, round, text);
            }
        }
        return text;
    }

private:
    void AddLine(std::string_view line, int round, std::string &text) {
        const bool header = line.starts_with('[');
        const std::size_t equal = line.find('=');
        for (std::size_t at = 0; at < line.size(); ++at) {
            const bool digit = std::isdigit(static_cast<unsigned char>(line[at])) != 0;
            if (header && line[at] == ']') {
                text += "_" + std::to_string(round);
            }
            const bool first = at > 0 && line[at - 1] == ' ';  // a number keeps its length
            text += digit && at > equal ? static_cast<char>('0' + (first ? 1 : 0) + Digit(first)) : line[at];
        }
        if (equal != std::string_view::npos && numbers_.Below(100) < static_cast<std::uint32_t>(added_.percent)) {
            text += added_.addition;
        }
        text += added_.carriage_returns ? "\r\n" : "\n";
    }
    int Digit(bool first) { return static_cast<int>(numbers_.Below(first ? 9 : 10)); }

    TPlantLines added_;
    std::vector<std::string> lines_;
    CNumbers numbers_;
};

}  // namespace kq_bench
