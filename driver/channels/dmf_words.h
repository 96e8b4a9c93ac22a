#pragma once

#include <cstdint>
#include <string_view>

#include "driver/kq_def.h"
#include "platform/base/export.h"

/// The words of a driver map's text (DMF) for types, by the tags of TValue, and for directions.
namespace kq_drv {

/// The tag of a type word in small letters; 0 for any other word.
KQ_API std::uint32_t TypeOfWord(std::string_view word);
/// The type word of a tag; empty for a tag that no channel has.
KQ_API std::string_view TypeWord(std::uint32_t type);

/// The direction of a direction word in small letters, short forms included; false for any other word.
KQ_API bool DirectionOfWord(std::string_view word, kq_def::TDirection &direction);
/// The long word of a direction; empty for kDirectionEither, which a text can't say.
KQ_API std::string_view DirectionWord(kq_def::TDirection direction);

}  // namespace kq_drv
