#pragma once

/// The modbus example in large: its template and its first station over and over, with other names and numbers.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kq_bench {

/// A file of the example; folder has the examples.
inline std::string ModbusFile(const std::string &folder, std::string_view name) {
    const std::filesystem::path path = std::filesystem::path(folder) / "modbus" / name;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void ReplaceAll(std::string &text, std::string_view old_part, const std::string &part) {
    for (std::size_t at = 0; (at = text.find(old_part, at)) != std::string::npos; at += part.size()) {
        text.replace(at, old_part.size(), part);
    }
}

inline std::string ModbusTemplates(const std::string &folder, int count) {
    const std::string one = ModbusFile(folder, "modbus.pdt");
    std::string text;
    for (int round = 1; round <= count; ++round) {
        std::string next = one;
        for (const std::string_view name : {"'Settings'", "'Line'", "'Station'"}) {
            std::string renamed(name);
            ReplaceAll(next, name, renamed.insert(renamed.size() - 1, std::to_string(round)));
        }
        text += next;
    }
    return text;
}

/// Stations of the template, each with channels of its own and a comment; at most 999, as the template has it.
inline std::string ModbusStations(const std::string &folder, int count) {
    constexpr int kChannels = 24;  // of the station in the file
    const std::string file = ModbusFile(folder, "modbus.par");
    const std::size_t begin = file.find("[Station1]");
    const std::string one = file.substr(begin, file.find("[Station2]") - begin);
    std::string text;
    for (int station = 1; station <= count; ++station) {
        std::istringstream lines(one);
        for (std::string line; std::getline(lines, line);) {
            std::string changed;
            int field = 0;
            for (std::size_t at = 0; at < line.size();) {
                const std::size_t end = std::min(line.find_first_not_of("0123456789", at), line.size());
                if (end == at) {
                    field += line[at] == '=' || line[at] == ',' ? 1 : 0;
                    changed += line[at++];
                    continue;
                }
                const int number = std::stoi(line.substr(at, end - at));
                const bool block = line.find("Block") != std::string::npos;
                const bool channel = block && (field == 3 || field == 4);
                const bool register_number = block && field == 2;
                changed += std::to_string(channel               ? number + (station - 1) * kChannels
                                          : register_number     ? number + station
                                          : line.front() == '[' ? station
                                                                : number);
                at = end;
            }
            text += changed + "\n";
        }
        text += "(* line " + std::to_string(station % 16 + 1) + " *)\r\n";
    }
    return text;
}

}  // namespace kq_bench
