// What follows from an assignment: instances that depend on the variable adjust themselves, and a dependent section may
// come to life. Either may assign in turn, so both the depth and the number of births are bounded. A new value for the
// bound references of a section sets off the same and counts as an assignment.

#include <algorithm>

#include "model/sheet_data.h"

namespace kq_pdt {

namespace {

/// One more assignment under way, for the length of a block. The outermost one begins the count of births anew.
class CAssignGuard {
public:
    CAssignGuard(std::uint32_t &depth, std::uint32_t &sections_born) : depth_(depth) {
        if (depth_++ == 0) {
            sections_born = 0;
        }
    }
    ~CAssignGuard() { --depth_; }
    CAssignGuard(const CAssignGuard &) = delete;
    CAssignGuard &operator=(const CAssignGuard &) = delete;

private:
    std::uint32_t &depth_;
};

}  // namespace

CSectionDef *CParSheetData::AssignVariable(CVariable &variable, const TParValue &value, bool &ok) {
    if (assign_depth_ >= kMaxAssignDepth) {
        ok = false;
        return nullptr;
    }
    const CAssignGuard guard(assign_depth_, sections_born_);
    const TParValue old_value = variable.Stored();
    variable.Replace(value);
    CSectionDef *born = VariableAssigned(&variable, value, ok);
    if (!ok) {
        variable.Replace(old_value);
        bool ignored = true;
        NotifyInstances(&variable, old_value, ignored);
        Post(cmRebuildSheets);
        born = nullptr;
    }
    return born;
}

CSectionDef *CParSheetData::VariableAssigned(CVariable *variable, const TParValue &value, bool &ok) {
    if (variable == nullptr) {
        if (assign_depth_ < kMaxAssignDepth) {
            const CAssignGuard guard(assign_depth_, sections_born_);
            NotifyInstances(nullptr, value, ok);
            Post(cmRebuildSheets);
        }
        return nullptr;
    }
    NotifyInstances(variable, value, ok);
    if (!ok) {
        Post(cmRebuildSheets);
        return nullptr;
    }
    const auto dependent = std::find_if(dependents_.begin(), dependents_.end(), [variable](CSectionDef *definition) {
        const CVarRefItem *depend_on = definition->DependOn();
        return depend_on->Name() == variable->Name() && depend_on->Variable() == variable;
    });
    if (dependent == dependents_.end()) {
        Post(cmRebuildSheets);
        return nullptr;
    }
    if (sections_born_ >= kMaxSectionsBorn) {
        ok = false;
        return nullptr;
    }
    ++sections_born_;
    CSectionDef &section = AppendInstance((*dependent)->Clone(true));
    section.BindVariable(*variable);
    return &section;
}

/// Instances that come to life on the way are walked too; those released leave the list, and the walk goes on behind
/// their place.
void CParSheetData::NotifyInstances(const CVariable *variable, const TParValue &value, bool &ok) {
    if (reading_) {
        return;
    }
    ok = true;
    std::size_t place = 0;
    walks_.push_back(&place);
    while (place < instances_.size()) {
        instances_[place++]->ParameterChanged(variable, value, ok);
    }
    walks_.pop_back();
    ReleaseDying();
}

void CParSheetData::ReleaseInstancesOf(const CSectionDef &definition) {
    // What an instance holds may take others along, so each is looked up anew.
    while (CSectionDef *instance = index_.FirstOf(&definition)) {
        const auto at =
            std::lower_bound(instances_.begin(), instances_.end(), instance->Serial(),
                             [](const auto &other, std::uint32_t serial) { return other->Serial() < serial; });
        const auto place = static_cast<std::size_t>(at - instances_.begin());
        std::unique_ptr<CSectionDef> section = std::move(*at);
        instances_.erase(at);
        for (std::size_t *walk : walks_) {
            *walk -= *walk > place ? 1 : 0;
        }
        index_.Remove(*section);
        Post(cmRebuildTable, section->RowId());
        Release(std::move(section));
    }
}

void CParSheetData::ReleaseDefinition(const CSectionDef &definition) {
    const auto place = std::find_if(definitions_.begin(), definitions_.end(),
                                    [&definition](const auto &other) { return other.get() == &definition; });
    if (place == definitions_.end()) {
        return;
    }
    std::unique_ptr<CSectionDef> section = std::move(*place);
    definitions_.erase(place);
    FindDependents();
    Release(std::move(section));
}

}  // namespace kq_pdt
