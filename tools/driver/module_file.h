#pragma once

#include <string>

#include "platform/os/modules.h"
#include "tools/console/console.h"

/// Can a file be read, as a plain file? False tells the reason on the console. Standard input is no file here.
bool CheckReadable(TConsole &console, const std::string &name);

/// A module that is open as long as this object lives.
class CModuleFile {
public:
    CModuleFile() = default;
    ~CModuleFile() { kq_os::FreeLibrary(module_); }
    CModuleFile(const CModuleFile &) = delete;
    CModuleFile &operator=(const CModuleFile &) = delete;

    /// Opens a module for looking at its names. False if the file is no module.
    bool OpenNames(const std::string &name);
    /// Loads a module. False tells why that can't be done: the file is no module, not one for this processor, or it
    /// needs something that isn't there.
    bool Load(const std::string &name, std::string &reason);

    kq_os::HMODULE Handle() const { return module_; }
    bool Exports(const std::string &entry) const {
        return kq_os::GetFunctionAddress(module_, entry.c_str()) != nullptr;
    }

private:
    kq_os::HMODULE module_ = nullptr;
};
