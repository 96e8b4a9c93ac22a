// Modules while a parameter file is read. A `dll` value's condition may depend on a value further down, so after each
// pass the modules follow what was read: templates are loaded, whose sections may wait in the text, or released with
// all that was read into their sections.

#include <algorithm>

#include "model/dll_item.h"
#include "model/par_reader.h"
#include "model/sheet_data.h"

namespace kq_pdt {

namespace {

/// How often modules may change in one reading; values that switch their own module on and off would never end.
constexpr std::uint32_t kMaxModuleChanges = 1000;

bool HasModules(const CSectionDef &definition) {
    return std::any_of(definition.Keys().begin(), definition.Keys().end(), [](const auto &key) {
        return std::any_of(key->Pars().begin(), key->Pars().end(),
                           [](const auto &par) { return par->Items().HasModule(); });
    });
}

/// Lets the first module of a section follow that doesn't; false if all do.
bool RefreshModuleOf(CSectionDef &section) {
    const CScopeGuard section_scope(&section);
    for (const auto &key : section.Keys()) {
        const CScopeGuard key_scope(key.get());
        for (const auto &par : key->Pars()) {
            for (const auto &item : par->Items().Items()) {
                if (item->Code() == TItemCode::kDll && static_cast<const CDllItem &>(*item).IsOutdated()) {
                    item->Publish();
                    return true;
                }
            }
        }
    }
    return false;
}

}  // namespace

bool CParReader::RefreshModule() {
    for (const auto &definition : sheet_data_.Definitions()) {
        std::uint32_t serial = 0;
        const bool has_modules = HasModules(*definition);
        while (CSectionDef *section =
                   has_modules ? sheet_data_.Instances().Index().NextOf(definition.get(), serial) : nullptr) {
            serial = section->Serial();
            if (RefreshModuleOf(*section)) {
                return true;
            }
        }
    }
    return false;
}

/// True if a module's template was loaded or released. Sections that went with one wait again; what goes a second time
/// stays away.
bool CParReader::FollowModules(TPending &retry) {
    const CInstances::CHold hold(sheet_data_.Instances());
    CAssignments &assignments = sheet_data_.Assignments();
    assignments.SettleLostSources();
    bool changed = false;
    assignments.SetReading(true);
    while (module_changes_ < kMaxModuleChanges && RefreshModule()) {
        ++module_changes_;
        assignments.SettleLostSources();
        changed = true;
    }
    assignments.SetReading(false);
    for (auto read = read_.begin(); changed && read != read_.end();) {
        const auto instance = read->second.lock();
        if (instance && !(*instance)->IsReleased()) {
            ++read;
            continue;
        }
        TPending &goes_to = read->first.came_back ? lost_ : retry;
        goes_to.push_back(read->first);
        goes_to.back().came_back = true;
        read = read_.erase(read);
    }
    return changed;
}

}  // namespace kq_pdt
