// The entries that a host insists on, in the order in which it looks for them, and those that mark a generation.

#include "tools/driver/module_facts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "driver/kq_drv.h"
#include "platform/base/code_page.h"
#include "tools/driver/module_file.h"

namespace {

using TNames = std::vector<std::string>;

/// Exported by the module in either text width.
const TNames kInAnyWidth = {"GetDriverInfo", "Version", "Check"};

/// Exported in the module's own width; of each row one is enough.
const std::vector<TNames> kInOwnWidth = {
    {"MakeDriver"},
    {"DisposeDriver"},
    {"Init", "Init3"},
    {"Done"},
    {"InputRequest"},
    {"InputRequestCompleted"},
    {"InputFinalized"},
    {"OutputRequestCompleted"},
    {"OutputFinalized"},
    {"DriverProc"},
    {"GetInput", "GetInput2", "GetInput3"},
    {"OutputRequest", "OutputRequest2", "OutputRequest3"},
};

/// What marks the generations 1 to 3.
const std::array<TNames, 3> kGenerationMarks = {{
    {"Init", "GetInput", "OutputRequest", "QueryProc"},
    {"GetInput2", "OutputRequest2"},
    {"Init3", "ReadParameters", "GetInput3", "OutputRequest3", "QueryProc3"},
}};

TNames WithSuffix(TNames names, std::string_view suffix) {
    std::for_each(names.begin(), names.end(), [suffix](std::string &name) { name += suffix; });
    return names;
}

bool ExportsOne(const CModuleFile &module, const TNames &names) {
    return std::any_of(names.begin(), names.end(), [&module](const std::string &name) { return module.Exports(name); });
}

std::string Joined(const TNames &names, std::string_view separator) {
    std::string text;
    for (const std::string &name : names) {
        text.append(text.empty() ? "" : separator).append(name);
    }
    return text;
}

void LookAtNames(const CModuleFile &module, TModuleFacts &facts) {
    facts.wide = !module.Exports("Version") && module.Exports("VersionW");
    const std::string_view suffix = facts.wide ? "W" : "";
    const auto require = [&module, &facts](const TNames &names) {
        if (!ExportsOne(module, names)) {
            facts.missing.push_back(Joined(names, ", "));
        }
    };
    for (const std::string &name : kInAnyWidth) {
        require({name, name + "W"});
    }
    for (const TNames &names : kInOwnWidth) {
        require(WithSuffix(names, suffix));
    }
    for (std::uint32_t generation = 1; generation <= kGenerationMarks.size(); ++generation) {
        if (ExportsOne(module, WithSuffix(kGenerationMarks[generation - 1], suffix))) {
            facts.generation = generation;
        }
    }
    facts.enumerates_channels = ExportsOne(module, WithSuffix({"EnumerateChannels"}, suffix));
    facts.searches_devices = ExportsOne(module, {"LoadModulesTree", "LoadModulesTreeW"});
}

/// Asks the module itself.
void Ask(const CModuleFile &module, TModuleFacts &facts) {
    std::array<char, 256> text{};
    kq_drv::CDriverComponentDLLHelper helper;
    std::uint32_t version = 0;
    facts.usable = helper.Init(text.size() - 1, text.data(), module.Handle()) && helper.Version(version) &&
                   helper.GetDriverDescription(text.size() - 1, text.data());
    if (facts.usable) {
        facts.version = version;
        facts.description = kq_base::ToUtf8(text.data());
    } else {
        facts.message = kq_base::ToUtf8(text.data());
    }
}

}  // namespace

TModuleFacts LookAtModule(const std::string &name) {
    TModuleFacts facts;
    if (CModuleFile names; names.OpenNames(name)) {
        LookAtNames(names, facts);
        if (!facts.missing.empty()) {
            facts.message = "entries are missing: " + Joined(facts.missing, "; ");
            return facts;
        }
    }
    if (CModuleFile module; module.Load(name, facts.message)) {
        facts.message.clear();
        Ask(module, facts);
    }
    return facts;
}
