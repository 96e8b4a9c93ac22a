// A handle that only looks is the address of its CModuleNames plus one. Those of loaded modules are even, so the lowest
// bit tells the two apart, whoever made the handle.

#include "platform/os/modules.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <string>

#include "platform/base/code_page.h"
#include "platform/base/file_system_name.h"
#include "platform/base/paths.h"
#include "platform/os/module_names.h"

namespace kq_os {

namespace {

/// What GetProcAddress gives for a name of a module that isn't loaded.
char name_is_there;

HMODULE HandleOf(CModuleNames *names) { return reinterpret_cast<char *>(names) + 1; }

CModuleNames *NamesOf(HMODULE module) { return reinterpret_cast<CModuleNames *>(static_cast<char *>(module) - 1); }

/// True if an address that was found through a module's handle lies in that module, not in one that it needs.
bool LiesIn(HMODULE module, void *address) {
    link_map *own = nullptr;
    dl_find_object found = {};
    return dlinfo(module, RTLD_DI_LINKMAP, &own) == 0 && _dl_find_object(address, &found) == 0 &&
           found.dlfo_link_map == own;
}

/// True if an address is that of a symbol for data.
bool IsData(void *address) {
    Dl_info info = {};
    ElfW(Sym) *symbol = nullptr;
    if (dladdr1(address, &info, reinterpret_cast<void **>(&symbol), RTLD_DL_SYMENT) == 0 || symbol == nullptr) {
        return false;
    }
    // The type is coded alike in both widths.
    const unsigned type = ELF64_ST_TYPE(symbol->st_info);
    return info.dli_saddr == address && (type == STT_OBJECT || type == STT_COMMON);
}

/// Does work that may need memory; gives what null or 0 is in its result if memory is short.
template <typename TWork>
auto WithoutThrowing(TWork work) -> decltype(work()) {
    try {
        return work();
    } catch (const std::bad_alloc &) {
        return {};
    }
}

/// A search through the loaded modules by file name, and the path that it found.
struct TNameSearch {
    std::string_view name;
    std::string path;
};

bool Answers(std::string_view file_name, std::string_view name) {
    if (kq_base::EqualIgnoringCase(file_name, name)) {
        return true;
    }
    constexpr std::string_view kExtension = ".dll";
    const std::size_t stem = name.size() < kExtension.size() ? 0 : name.size() - kExtension.size();
    if (!kq_base::EqualIgnoringCase(name.substr(stem), kExtension)) {
        return false;
    }
    const std::string library = std::string("lib").append(name.substr(0, stem)).append(".so");
    const std::string_view rest = file_name.substr(std::min(library.size(), file_name.size()));
    return kq_base::EqualIgnoringCase(file_name.substr(0, library.size()), library) &&
           (rest.empty() || rest.front() == '.');
}

int LookAtLoaded(dl_phdr_info *info, std::size_t, void *data) {
    // Nothing may be thrown through the system's loader.
    return WithoutThrowing([info, data] {
        auto &search = *static_cast<TNameSearch *>(data);
        const std::string_view file_name = kq_base::FileNamePart(info->dlpi_name);
        if (!Answers(kq_base::FromFileSystem(file_name), search.name)) {
            return 0;
        }
        search.path = info->dlpi_name;
        return 1;
    });
}

HMODULE Load(std::string_view path) {
    std::string located = kq_base::LocateFile(path);
    const bool bare = located.find('/') == std::string::npos;
    struct stat status = {};
    if (stat(located.c_str(), &status) == 0) {
        if (!CModuleNames().Open(located)) {
            return nullptr;
        }
        if (bare) {
            located.insert(0, "./");
        }
    } else if (located.empty() || !bare) {
        return nullptr;
    }
    return dlopen(located.c_str(), RTLD_NOW | RTLD_LOCAL);
}

HMODULE OpenNames(std::string_view path) {
    auto names = std::make_unique<CModuleNames>();
    return names->Open(kq_base::LocateFile(path)) ? HandleOf(names.release()) : nullptr;
}

HMODULE FindLoaded(std::string_view name) {
    std::string path;
    if (kq_base::FileNamePart(name) != name) {
        path = kq_base::LocateFile(name);
    } else if (!name.empty()) {
        TNameSearch search = {name, {}};
        if (dl_iterate_phdr(LookAtLoaded, &search) == 0) {
            return nullptr;
        }
        path = search.path;
    }
    HMODULE module = dlopen(name.empty() ? nullptr : path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (module != nullptr) {
        dlclose(module);
    }
    return module;
}

}  // namespace

bool OnlyLooks(HMODULE module) { return (reinterpret_cast<std::uintptr_t>(module) & 1U) != 0; }

HMODULE LoadLibraryA(std::string_view path) {
    return WithoutThrowing([path] { return Load(path); });
}

HMODULE LoadLibraryExA(std::string_view path, std::uint32_t flags) {
    const auto open = (flags & kDontResolveReferences) != 0 ? OpenNames : Load;
    return WithoutThrowing([path, open] { return open(path); });
}

void *GetProcAddress(HMODULE module, const char *name) {
    if (module == nullptr || name == nullptr) {
        return nullptr;
    }
    if (OnlyLooks(module)) {
        return NamesOf(module)->Exports(name) ? &name_is_there : nullptr;
    }
    void *address = dlsym(module, name);
    return address != nullptr && LiesIn(module, address) ? address : nullptr;
}

void *GetFunctionAddress(HMODULE module, const char *name) {
    void *address = GetProcAddress(module, name);
    const bool function =
        address != nullptr && (OnlyLooks(module) ? NamesOf(module)->ExportsFunction(name) : !IsData(address));
    return function ? address : nullptr;
}

bool FreeLibrary(HMODULE module) {
    if (module == nullptr) {
        return false;
    }
    if (OnlyLooks(module)) {
        const std::unique_ptr<CModuleNames> names(NamesOf(module));
        return true;
    }
    return dlclose(module) == 0;
}

HMODULE GetModuleHandleA(std::string_view name) {
    return WithoutThrowing([name] { return FindLoaded(name); });
}

}  // namespace kq_os
