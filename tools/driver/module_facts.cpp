#include "tools/driver/module_facts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "driver/entry_table.h"
#include "driver/kq_drv.h"
#include "platform/base/code_page.h"
#include "tools/driver/module_file.h"

namespace {

using kq_drv::TEntryGroup;
using kq_drv::TEntryNeed;
using kq_drv::TEntryRow;

/// Takes from the module's names what the group of entries says about it.
void LookAtGroup(const CModuleFile &module, TEntryGroup group, TModuleFacts &facts) {
    const bool either = group.front().need == TEntryNeed::kEitherWidth;
    bool found = false;
    for (const TEntryRow &row : group) {
        if (module.Exports(row.NameIn(facts.wide)) || (either && module.Exports(row.NameIn(!facts.wide)))) {
            facts.generation = std::max<std::uint32_t>(facts.generation, row.generation);
            found = true;
        }
    }
    if (!found && (either || kq_drv::IsNeeded(group))) {
        facts.missing.push_back(kq_drv::GroupNames(group, facts.wide));
    }
}

void LookAtNames(const CModuleFile &module, TModuleFacts &facts) {
    facts.wide = !module.Exports("Version") && module.Exports("VersionW");
    kq_drv::VisitEntryGroups([&module, &facts](TEntryGroup group) {
        LookAtGroup(module, group, facts);
        return true;
    });
    facts.enumerates_channels = module.Exports(facts.wide ? "EnumerateChannelsW" : "EnumerateChannels");
    facts.searches_devices = module.Exports("LoadModulesTree") || module.Exports("LoadModulesTreeW");
}

std::string Joined(const std::vector<std::string> &names, std::string_view separator) {
    std::string text;
    for (const std::string &name : names) {
        text.append(text.empty() ? "" : separator).append(name);
    }
    return text;
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
