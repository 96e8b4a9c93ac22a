#include "template/language/keywords.h"

#include <array>
#include <cstddef>
#include <cstring>

// Every identifier of a template is looked up here, so the look-up is one step: the length and three letters give a
// slot, and a slot holds at most one keyword. That no two words share one is checked while this file is compiled.
namespace kq_pdt {
namespace {

struct TKeywordRow {
    TKeyword code;
    std::string_view word;
};

constexpr std::array<TKeywordRow, kKeywordCount> kRows = {{
    {kwDefSection, "def_section"},
    {kwEndSection, "end_section"},
    {kwName, "name"},
    {kwRequired, "required"},
    {kwDefKey, "def_key"},
    {kwEndKey, "end_key"},
    {kwMultiple, "multiple"},
    {kwDependOn, "depend_on"},
    {kwString, "string"},
    {kwNumber, "number"},
    {kwDefPar, "def_par"},
    {kwLabel, "label"},
    {kwDefault, "default"},
    {kwRangeFrom, "range_from"},
    {kwRangeTo, "range_to"},
    {kwId, "id"},
    {kwComment, "comment"},
    {kwEndPar, "end_par"},
    {kwBubble, "bubble"},
    {kwPar, "par"},
    {kwProcedure, "procedure"},
    {kwDll, "dll"},
    {kwLoadPdt, "load_pdt"},
    {kwOptional, "optional"},
    {kwNedef, "nedef"},
    {kwEnableIf, "enable_if"},
    {kwOption, "option"},
    {kwOptions, "options"},
    {kwChannels, "channels"},
    {kwChType, "ch_type"},
    {kwChFrom, "ch_from"},
    {kwChTo, "ch_to"},
    {kwChNumber, "ch_number"},
    {kwBoolean, "boolean"},
    {kwShortcard, "shortcard"},
    {kwCardinal, "cardinal"},
    {kwLongcard, "longcard"},
    {kwShortint, "shortint"},
    {kwInteger, "integer"},
    {kwLongint, "longint"},
    {kwShortreal, "shortreal"},
    {kwReal, "real"},
    {kwBegin, "begin"},
    {kwEnd, "end"},
    {kwInput, "input"},
    {kwOutput, "output"},
    {kwBidirectional, "bidirectional"},
    {kwChDirection, "ch_direction"},
    {kwNoChannels, "no_channels"},
    {kwChCount, "ch_count"},
    {kwVerFrom, "ver_from"},
    {kwReadAll, "read_all"},
    {kwKeywords, "keywords"},
    {kwWriteIfAll, "write_if_all"},
    {kwVar, "var"},
    {kwChannelsGroup, "channels_group"},
    {kwInitValue, "init_value"},
    {kwCreateNewChannel, "create_new_channel"},
    {kwMod, "mod"},
    {kwAll, "all"},
    {kwOr, "or"},
    {kwAnd, "and"},
    {kwNot, "not"},
    {kwChannelRange, "channel_range"},
    {kwType, "type"},
    {kwDirection, "direction"},
    {kwTrue, "true"},
    {kwFalse, "false"},
    {kwFloating, "floating"},
    {kwNoCaseSensitive, "no_case_sensitive"},
}};

constexpr bool InOrderOfCodes() {
    for (std::uint32_t row = 0; row < kRows.size(); ++row) {
        if (kRows[row].code != kFirstKeyword + row) {
            return false;
        }
    }
    return true;
}

static_assert(InOrderOfCodes(), "a code is found by its row");

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
    for (std::size_t row = 0; row < kRows.size(); ++row) {
        const std::size_t length = kRows[row].word.size();
        std::uint8_t &slot = slots.row[Slot(kRows[row].word)];
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
    if (row == kEmptySlot || kRows[row].word.size() != word.size()) {
        return 0;
    }
    return SameLetters(kRows[row].word.data(), word.data(), word.size()) ? kFirstKeyword + row : 0;
}

std::string_view KeywordText(std::uint32_t code) {
    const std::uint32_t row = code - kFirstKeyword;
    return row < kKeywordCount ? kRows[row].word : std::string_view();
}

}  // namespace kq_pdt
