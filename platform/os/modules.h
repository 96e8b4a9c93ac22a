#pragma once

#include <cstdint>
#include <string_view>

#include "platform/base/export.h"

/// Dynamic modules under the names that the runtime's other systems give the operations. Paths are library paths
/// (platform/base/paths.h); a module's file may have any extension, ".dll" as a rule. Nothing throws: what memory
/// doesn't suffice for fails.
namespace kq_os {

/// A module's handle, null for none. That of a loaded module is the one which dlopen gives, so a host may bring its
/// own.
using HMODULE = void *;

/// LoadLibraryExA: only look at the module's names.
inline constexpr std::uint32_t kDontResolveReferences = 1;

/// Loads a module and runs its initialisers, or counts one more user of a loaded one. A bare name that is no file in
/// the current directory is searched for by the system. Null if that fails; a file that isn't a whole module isn't even
/// handed to the system.
KQ_API HMODULE LoadLibraryA(std::string_view path);

/// With the flag kDontResolveReferences: a handle on which only GetProcAddress and FreeLibrary work; nothing of the
/// module is run, and its processor and the modules that it needs don't matter. Without flags the same as LoadLibraryA.
KQ_API HMODULE LoadLibraryExA(std::string_view path, std::uint32_t flags);

/// Is this a handle that only looks?
KQ_API bool OnlyLooks(HMODULE module);

/// The address of a name that the module itself exports, null without one: the modules that it needs aren't searched.
/// On a handle that only looks, the result says no more than that the name is there: it points to nothing, and must be
/// neither called nor read.
KQ_API void *GetProcAddress(HMODULE module, const char *name);

/// The same for a function: null also for the name of data, which is nothing to call.
KQ_API void *GetFunctionAddress(HMODULE module, const char *name);

/// Gives a handle back. False for null and if the system refuses.
KQ_API bool FreeLibrary(HMODULE module);

/// The handle of a loaded module, without counting a user: by its path, or by its bare file name in any case. The name
/// "x.dll" also finds a library named "libx.so" with any version behind it. An empty name is the program itself.
KQ_API HMODULE GetModuleHandleA(std::string_view name);

}  // namespace kq_os
