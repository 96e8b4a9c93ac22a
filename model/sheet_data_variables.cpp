// What follows from an assignment: instances that depend on the variable adjust themselves, and a dependent section may
// come to life. Either may assign in turn, so both the depth and the number of births are bounded.

#include <algorithm>

#include "model/sheet_data.h"

namespace kq_pdt {

CSectionDef *CParSheetData::AssignVariable(CVariable &variable, const TParValue &value, bool &ok) {
    if (assign_depth_ >= kMaxAssignDepth) {
        ok = false;
        return nullptr;
    }
    if (assign_depth_ == 0) {
        sections_born_ = 0;
    }
    ++assign_depth_;
    const TParValue old_value = variable.Stored();
    variable.Replace(value);
    CSectionDef *born = VariableAssigned(&variable, value, ok);
    if (!ok) {
        variable.Replace(old_value);
        bool ignored = true;
        NotifyInstances(&variable, old_value, ignored);
        born = nullptr;
    }
    --assign_depth_;
    return born;
}

CSectionDef *CParSheetData::VariableAssigned(CVariable *variable, const TParValue &value, bool &ok) {
    NotifyInstances(variable, value, ok);
    if (!ok) {
        return nullptr;
    }
    const auto dependent = std::find_if(dependents_.begin(), dependents_.end(), [variable](CSectionDef *definition) {
        const CVarRefItem *depend_on = definition->DependOn();
        return variable != nullptr && depend_on->Name() == variable->Name() && depend_on->Variable() == variable;
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
    for (std::size_t place = 0; place < instances_.size();) {
        if (instances_[place]->Definition() != &definition) {
            ++place;
            continue;
        }
        std::unique_ptr<CSectionDef> section = std::move(instances_[place]);
        instances_.erase(instances_.begin() + static_cast<std::ptrdiff_t>(place));
        for (std::size_t *walk : walks_) {
            *walk -= *walk > place ? 1 : 0;
        }
        index_.Remove(*section);
        Post(cmRebuildTable, section->RowId());
        Release(std::move(section));
        place = 0;  // what the section held may have taken others along
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
