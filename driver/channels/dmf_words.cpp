#include "driver/channels/dmf_words.h"

#include <algorithm>
#include <array>

namespace kq_drv {
namespace {

struct TTypeWord {
    std::string_view word;
    std::uint32_t type;
};

struct TDirectionWord {
    std::string_view word;
    kq_def::TDirection direction;
};

constexpr std::array<TTypeWord, 11> kTypeWords = {{
    {"boolean", kq_def::kTagBoolean},
    {"shortcard", kq_def::kTagShortcard},
    {"cardinal", kq_def::kTagCardinal},
    {"longcard", kq_def::kTagLongcard},
    {"shortint", kq_def::kTagShortint},
    {"integer", kq_def::kTagInteger},
    {"longint", kq_def::kTagLongint},
    {"shortreal", kq_def::kTagShortreal},
    {"real", kq_def::kTagReal},
    {"buffer", kq_def::kTagBuffer},
    {"string", kq_def::kTagDString},
}};

// Of each direction the long word, which is the one that is written, comes first.
constexpr std::array<TDirectionWord, 9> kDirectionWords = {{
    {"input", kq_def::kDirectionInput},
    {"in", kq_def::kDirectionInput},
    {"i", kq_def::kDirectionInput},
    {"output", kq_def::kDirectionOutput},
    {"out", kq_def::kDirectionOutput},
    {"o", kq_def::kDirectionOutput},
    {"bidirectional", kq_def::kDirectionBoth},
    {"bidirect", kq_def::kDirectionBoth},
    {"b", kq_def::kDirectionBoth},
}};

}  // namespace

std::uint32_t TypeOfWord(std::string_view word) {
    const auto *row = std::find_if(kTypeWords.begin(), kTypeWords.end(),
                                   [word](const TTypeWord &candidate) { return candidate.word == word; });
    return row != kTypeWords.end() ? row->type : 0;
}

std::string_view TypeWord(std::uint32_t type) {
    const auto *row = std::find_if(kTypeWords.begin(), kTypeWords.end(),
                                   [type](const TTypeWord &candidate) { return candidate.type == type; });
    return row != kTypeWords.end() ? row->word : std::string_view();
}

bool DirectionOfWord(std::string_view word, kq_def::TDirection &direction) {
    const auto *row = std::find_if(kDirectionWords.begin(), kDirectionWords.end(),
                                   [word](const TDirectionWord &candidate) { return candidate.word == word; });
    if (row == kDirectionWords.end()) {
        return false;
    }
    direction = row->direction;
    return true;
}

std::string_view DirectionWord(kq_def::TDirection direction) {
    const auto *row =
        std::find_if(kDirectionWords.begin(), kDirectionWords.end(),
                     [direction](const TDirectionWord &candidate) { return candidate.direction == direction; });
    return row != kDirectionWords.end() ? row->word : std::string_view();
}

}  // namespace kq_drv
