#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kq_pdt {

/// A place in a configuration as people write it, with the names that the parameter file shows:
///
///     SECTION          a section, and the first cell of its name
///     SECTION:M        the M-th cell of its name
///     SECTION/KEY      a line, and its first value
///     SECTION/KEY:M    its M-th value, which is the M-th cell behind its name
///     SECTION/KEY@M    the M-th cell of its name
///
/// #N behind a name is the N-th of those that show the same name. All numbers count from 1. A backslash makes the
/// character behind it a part of the name, which only `/`, `#`, `:`, `@` and `\` need, and these not everywhere.
struct TEditPlace {
    struct TName {
        std::string text;
        std::uint32_t number = 0;  ///< 0 if none was written
    };
    enum class TCell {
        kNone,   ///< no cell was written
        kValue,  ///< :M
        kName,   ///< @M
    };

    TName section;
    std::optional<TName> key;
    TCell cell = TCell::kNone;
    std::uint32_t number = 0;  ///< of the cell
};

/// Reads a place. False if one of its numbers is 0; any other text is a place. A number beyond 32 bits is one that
/// nothing has.
bool ParseEditPlace(std::string_view text, TEditPlace &place);

/// A name as it stands in a place, for a section's or a key's.
std::string WriteSectionName(const TEditPlace::TName &name);
std::string WriteKeyName(const TEditPlace::TName &name);

}  // namespace kq_pdt
