/// The reader of a module's exported names, over any bytes.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/os/elf_symbols.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view image(reinterpret_cast<const char *>(data), size);
    kq_os::CElfSymbols symbols;
    const bool opened = symbols.Open(image);
    for (const std::string_view name : {"Version", "MakeDriver", "Init3W", "function", "weak", "import", ""}) {
        // What is exported is in the file, with its terminator.
        if (symbols.Exports(name) && (!opened || image.find(std::string(name) + '\0') == std::string_view::npos)) {
            std::abort();
        }
    }
    return 0;
}
