#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kq_pdt {

/// The name of a section or a key as a part of a place.
struct TPlaceName {
    std::string text;
    std::uint32_t number = 0;  ///< of #N; 0 if none was written
};

/// The PLACE of an edit as people write it, with the names that the parameter file shows:
///
///     SECTION          a section, and the first cell of its name
///     SECTION:M        the M-th cell of its name
///     SECTION/KEY      a line, and its first value
///     SECTION/KEY:M    its M-th value, which is the M-th cell after its name
///     SECTION/KEY@M    the M-th cell of its name
///
/// #N after a name is the N-th of those that show the same name. All numbers count from 1. A backslash makes the
/// next character a part of the name, which only `/`, `#`, `:`, `@` and `\` need, and these not everywhere.
struct TEditPlace {
    enum class TCell {
        kNone,   ///< no cell was written
        kValue,  ///< :M
        kName,   ///< @M
    };

    TPlaceName section;
    std::optional<TPlaceName> key;
    TCell cell = TCell::kNone;
    std::uint32_t number = 0;  ///< of the cell
};

/// Reads a place. False if one of its numbers is 0; any other text is a place. A number beyond 32 bits is one that
/// nothing has.
bool ParseEditPlace(std::string_view text, TEditPlace &place);

/// The form that the name of a section or a key has in a place; ParseEditPlace reads it back.
std::string WriteSectionName(const TPlaceName &name);
std::string WriteKeyName(const TPlaceName &name);

}  // namespace kq_pdt
