#include "template/language/keywords.h"

#include <array>
#include <cstddef>
#include <cstring>

// Every identifier of a template is looked up here, so the look-up is one step: the length and three letters give a
// slot, and at most one keyword stands in a slot. That no two words meet is checked while this file is compiled.
namespace kq_pdt {
namespace {

using namespace std::string_view_literals;

constexpr std::array<std::string_view, kKeywordCount> kWords = {
    "def_section"sv,
    "end_section"sv,
    "name"sv,
    "required"sv,
    "def_key"sv,
    "end_key"sv,
    "multiple"sv,
    "depend_on"sv,
    "string"sv,
    "number"sv,
    "def_par"sv,
    "label"sv,
    "default"sv,
    "range_from"sv,
    "range_to"sv,
    "id"sv,
    "comment"sv,
    "end_par"sv,
    "bubble"sv,
    "par"sv,
    "procedure"sv,
    "dll"sv,
    "load_pdt"sv,
    "optional"sv,
    "nedef"sv,
    "enable_if"sv,
    "option"sv,
    "options"sv,
    "channels"sv,
    "ch_type"sv,
    "ch_from"sv,
    "ch_to"sv,
    "ch_number"sv,
    "boolean"sv,
    "shortcard"sv,
    "cardinal"sv,
    "longcard"sv,
    "shortint"sv,
    "integer"sv,
    "longint"sv,
    "shortreal"sv,
    "real"sv,
    "begin"sv,
    "end"sv,
    "input"sv,
    "output"sv,
    "bidirectional"sv,
    "ch_direction"sv,
    "no_channels"sv,
    "ch_count"sv,
    "ver_from"sv,
    "read_all"sv,
    "keywords"sv,
    "write_if_all"sv,
    "var"sv,
    "channels_group"sv,
    "init_value"sv,
    "create_new_channel"sv,
    "mod"sv,
    "all"sv,
    "or"sv,
    "and"sv,
    "not"sv,
    "channel_range"sv,
    "type"sv,
    "direction"sv,
    "true"sv,
    "false"sv,
    "floating"sv,
    "no_case_sensitive"sv,
};

constexpr std::size_t kShortest = 2;
constexpr std::size_t kLongest = 18;
constexpr std::uint8_t kEmptySlot = 0xFF;

constexpr std::uint8_t Slot(std::string_view word) {
    const std::size_t length = word.size();
    const auto letter = [word](std::size_t at) { return std::uint32_t{static_cast<std::uint8_t>(word[at])}; };
    const std::uint32_t mixed =
        static_cast<std::uint32_t>(length) * 51 + letter(0) * 57 + letter(length - 1) * 20 + letter(length / 2) * 26;
    return static_cast<std::uint8_t>(mixed);
}

struct TSlots {
    std::array<std::uint8_t, 256> row{};
    bool perfect = true;
};

constexpr TSlots MakeSlots() {
    TSlots slots;
    slots.row.fill(kEmptySlot);
    for (std::size_t row = 0; row < kWords.size(); ++row) {
        const std::size_t length = kWords[row].size();
        std::uint8_t &slot = slots.row[Slot(kWords[row])];
        slots.perfect = slots.perfect && slot == kEmptySlot && length >= kShortest && length <= kLongest;
        slot = static_cast<std::uint8_t>(row);
    }
    return slots;
}

constexpr TSlots kSlots = MakeSlots();
static_assert(kSlots.perfect, "two keywords share a slot, or one is out of bounds: choose other factors");

template <typename TBlock>
bool SameBlock(const char *left, const char *right) {
    TBlock left_block;
    TBlock right_block;
    std::memcpy(&left_block, left, sizeof(TBlock));
    std::memcpy(&right_block, right, sizeof(TBlock));
    return left_block == right_block;
}

// Two overlapping blocks cover a length between one and two blocks.
template <typename TBlock>
bool SameEnds(const char *left, const char *right, std::size_t length) {
    const std::size_t tail = length - sizeof(TBlock);
    return SameBlock<TBlock>(left, right) && SameBlock<TBlock>(left + tail, right + tail);
}

// A call of the library's comparison would cost more than all the rest of the look-up.
bool SameLetters(const char *left, const char *right, std::size_t length) {
    if (length >= 8) {
        return SameEnds<std::uint64_t>(left, right, length) &&
               (length <= 16 || SameBlock<std::uint64_t>(left + 8, right + 8));
    }
    return length >= 4 ? SameEnds<std::uint32_t>(left, right, length) : SameEnds<std::uint16_t>(left, right, length);
}

}  // namespace

std::uint32_t FindKeyword(std::string_view word) {
    if (word.size() < kShortest || word.size() > kLongest) {
        return 0;
    }
    const std::uint8_t row = kSlots.row[Slot(word)];
    if (row == kEmptySlot || kWords[row].size() != word.size()) {
        return 0;
    }
    return SameLetters(kWords[row].data(), word.data(), word.size()) ? kFirstKeyword + row : 0;
}

std::string_view KeywordText(std::uint32_t code) {
    const std::uint32_t row = code - kFirstKeyword;
    return row < kKeywordCount ? kWords[row] : std::string_view();
}

}  // namespace kq_pdt
