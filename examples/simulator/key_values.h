#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scanner/par_scanner.h"

namespace simulator {

/// True for a plain decimal of 32 bits.
bool ReadNumber(std::string_view text, std::uint32_t &number);

/// The values of the scanner's current key, taken one after the other. A value that isn't there leaves its target
/// alone; one that is wrong is remembered, and nothing is taken after it.
class CKeyValues {
public:
    explicit CKeyValues(par_scanner::CParScanner &scanner);

    void TakeNumber(std::uint32_t &number, std::uint32_t from, std::uint32_t to);
    /// A word of a list; gives its index in it.
    void TakeWord(std::size_t &index, std::initializer_list<std::string_view> words);
    /// Any text, without the quotes around it.
    void TakeText(std::string &text);

    /// Empty if all was well: also a value that nobody took is wrong.
    std::string Mistake() const;

private:
    bool Next(std::string_view &value);

    std::vector<std::string> values_;
    std::size_t taken_ = 0;
    std::string mistake_;
};

}  // namespace simulator
