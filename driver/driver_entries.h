#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "driver/entry_table.h"

namespace kq_drv {

/// The addresses of the entries that a module was found to export, in its own text width.
class CDriverEntries {
public:
    /// Looks the entries up. False if one that is needed is missing: its name, or the names of its group. What was
    /// found before it stays.
    bool Find(void *module, bool wide, std::string &missing);

    /// An entry, null for an absent one. Where its form depends on the text width, the character is to be the module's.
    template <TEntry Entry, typename TCharacter = char>
    auto *Get() const {
        using TForm = typename TEntryForm<Entry, TCharacter>::Type;
        return reinterpret_cast<TForm *>(addresses_[static_cast<std::size_t>(Entry)]);
    }

private:
    std::array<void *, static_cast<std::size_t>(TEntry::kCount)> addresses_{};
};

}  // namespace kq_drv
