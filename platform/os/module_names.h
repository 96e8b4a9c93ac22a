#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/os/elf_symbols.h"

namespace kq_os {

/// A look at a module's file for the names that it exports. Nothing of the module is loaded or run. The file stays
/// mapped, not open, as long as this object lives; nobody may cut it shorter during that time.
class CModuleNames {
public:
    CModuleNames() = default;
    CModuleNames(const CModuleNames &) = delete;
    CModuleNames &operator=(const CModuleNames &) = delete;
    ~CModuleNames() { Close(); }

    /// Opens a file by the file system's path. False if it is no module: missing, not a plain file, damaged, or of
    /// another format.
    bool Open(const std::string &path);
    void Close();

    bool Exports(std::string_view name) const { return symbols_.Exports(name); }
    bool ExportsFunction(std::string_view name) const { return symbols_.ExportsFunction(name); }

private:
    void *memory_ = nullptr;
    std::size_t size_ = 0;
    CElfSymbols symbols_;
};

}  // namespace kq_os
