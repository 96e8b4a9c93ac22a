#include "scanner/string_tape_reader.h"

#include <algorithm>
#include <limits>

namespace par_scanner {

void CStringTapeReader::InitDString(const TDStringA *text) {
    InitDString(text != nullptr ? text->View() : std::string_view());
}

void CStringTapeReader::InitDString(std::string_view text) {
    constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max();
    InitBuffer(text.data(), static_cast<std::uint32_t>(std::min(text.size(), kLongest)));
}

void CStringTapeReader::Done() { InitBuffer(nullptr, 0); }

bool CStringTapeReader::ReadCharacter(std::uint32_t &error, char &character, bool peek) {
    return CTapeReader::ReadCharacter(error, character, peek);
}

}  // namespace par_scanner
