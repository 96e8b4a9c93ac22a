#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kq_os {

/// The names that a shared library in the ELF format exports, read from the bytes of its file as the system's loader
/// would: through the dynamic segment and its hash table. Little endian, words of 32 or 64 bits, for any processor. The
/// bytes are not trusted: whatever they hold, nothing outside them is read and every search ends.
class CElfSymbols {
public:
    /// Finds the tables. False if the bytes aren't a whole shared library; nothing is exported then. The bytes have to
    /// stay as long as this object is asked.
    bool Open(std::string_view image);
    /// True if the library defines and exports the name; names that it only uses don't count.
    bool Exports(std::string_view name) const { return TypeOf(name).has_value(); }
    /// The same for the name of something that can be called: not of data.
    bool ExportsFunction(std::string_view name) const;

private:
    enum class THash : std::uint8_t { kNone, kGnu, kClassic };

    template <typename TFormat>
    bool OpenAs();
    // The type of an exported symbol, one of the STT_ numbers; none if the library doesn't export it.
    std::optional<unsigned> TypeOf(std::string_view name) const;
    template <typename TFormat>
    std::optional<unsigned> FindInGnuHash(std::string_view name) const;
    template <typename TFormat>
    std::optional<unsigned> FindInClassicHash(std::string_view name) const;
    template <typename TFormat>
    std::optional<unsigned> TypeOfExported(std::uint64_t index, std::string_view name) const;

    std::string_view image_;
    bool wide_ = false;          ///< words of 64 bits
    THash hash_ = THash::kNone;  ///< kNone as long as nothing is open
    std::uint64_t hash_at_ = 0;  ///< the tables' offsets in the file
    std::uint64_t symbols_at_ = 0;
    std::string_view strings_;
};

}  // namespace kq_os
