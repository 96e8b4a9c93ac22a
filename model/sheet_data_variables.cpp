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
    CSectionDef &section = instances_.Append((*dependent)->Clone(true));
    section.BindVariable(*variable);
    return &section;
}

void CParSheetData::NotifyInstances(const CVariable *variable, const TParValue &value, bool &ok) {
    if (!reading_) {
        ok = true;
        instances_.ParameterChanged(variable, value, ok);
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
    instances_.Release(std::move(section));
}

}  // namespace kq_pdt
