#include "tools/host_options.h"

#include <algorithm>
#include <string_view>

#include "platform/base/code_page.h"
#include "platform/base/files.h"
#include "tools/console/diagnostics.h"

bool MakeHostOptions(const TArguments &arguments, TConsole &console, kq_cfg::TOptions &options) {
    if (arguments.language) {
        using kq_cfg::kLanguages;
        const auto *const found = std::find(kLanguages.begin(), kLanguages.end(), *arguments.language);
        options.language = static_cast<std::uint32_t>(found - kLanguages.begin());
    }
    if (arguments.modules) {
        if (!kq_base::CDisk::Current().IsDirectory(*arguments.modules)) {
            PrintError(console, *arguments.modules, "not a directory that can be read");
            return false;
        }
        options.modules = arguments.modules;
    }
    return true;
}
