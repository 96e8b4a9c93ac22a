#include "configurator/read_time_variables.h"

#include <algorithm>

#include "model/sheet_data.h"

namespace kq_pdt {

namespace {

bool PublishesTo(const CItem &item, const CVariable &variable) {
    return item.IdVariable() != nullptr && item.IdVariable()->Name() == variable.Name();
}

CItem *LastWritten(const CItemSeq &items, const CVariable &variable) {
    const auto found = std::find_if(items.Items().rbegin(), items.Items().rend(), [&](const auto &item) {
        return PublishesTo(*item, variable) && item->IsWritten();
    });
    return found != items.Items().rend() ? found->get() : nullptr;
}

/// The item of a row that publishes a variable last when its line is read. A choice in a name publishes while the name
/// is matched against the definitions, so into a variable of the definition.
CItem *LastWritten(CKeyDef &key, const CVariable &variable) {
    // NOLINTNEXTLINE(modernize-loop-convert): the last one first.
    for (auto par = key.Pars().rbegin(); par != key.Pars().rend(); ++par) {
        if (CItem *item = LastWritten((*par)->Items(), variable)) {
            return item;
        }
    }
    CItem *const item = key.Names() != nullptr ? LastWritten(key.Names()->Items(), variable) : nullptr;
    const bool lost = item != nullptr && item->Code() == TItemCode::kOptions && variable.Scope().Node() != nullptr;
    return lost ? nullptr : item;
}

}  // namespace

CReadTimeVariables::CReadTimeVariables(CSectionDef &section, CKeyDef &key) : section_(section), key_(key) {
    for (const auto &par : key.Pars()) {
        Collect(par->Items());
    }
    for (TEntry &entry : entries_) {
        TParValue value;
        if (FindBefore(*entry.variable, value)) {
            entry.variable->Replace(value);
        }
    }
    PublishName();
}

CReadTimeVariables::~CReadTimeVariables() {
    for (TEntry &entry : entries_) {
        entry.variable->Replace(entry.present);
    }
}

void CReadTimeVariables::Collect(const CItemSeq &items) {
    for (const auto &item : items.Items()) {
        if (item->Code() == TItemCode::kPlain) {
            Add(static_cast<const CVarRefItem &>(*item).Name());
        }
        if (const CEnableIf *condition = item->Attributes().enable_if.get()) {
            for (const CExprNode &node : condition->Expression().Nodes()) {
                if (node.kind == TExprKind::kReference) {
                    Add(node.value.text.View());
                }
            }
        }
    }
}

void CReadTimeVariables::Add(std::string_view name) {
    CVariable *const variable = section_.SheetData()->FindVariable(name);
    const bool known = std::any_of(entries_.begin(), entries_.end(),
                                   [variable](const TEntry &entry) { return entry.variable == variable; });
    if (variable != nullptr && !known) {
        entries_.push_back({variable, variable->Stored()});
    }
}

void CReadTimeVariables::Publish(const CItemSeq &items) {
    for (const TEntry &entry : entries_) {
        for (const auto &item : items.Items()) {
            if (PublishesTo(*item, *entry.variable)) {
                entry.variable->Replace(item->ValueInScopes());
            }
        }
    }
}

/// The name is read before the values; a choice publishes there only while it is matched.
void CReadTimeVariables::PublishName() {
    if (key_.Names() == nullptr) {
        return;
    }
    for (const TEntry &entry : entries_) {
        const CDefNode *const node = entry.variable->Scope().Node();
        const bool while_matched = node == nullptr || (node == &key_ && key_.Has(nfMultiple));
        for (const auto &item : key_.Names()->Items().Items()) {
            if (PublishesTo(*item, *entry.variable) && (item->Code() != TItemCode::kOptions || while_matched)) {
                entry.variable->Replace(item->ValueInScopes());
            }
        }
    }
}

/// The value of a variable before the row's line is read; false where that is the present one.
bool CReadTimeVariables::FindBefore(const CVariable &variable, TParValue &value) {
    const CDefNode *const node = variable.Scope().Node();
    if (node != nullptr && node->Has(nfKey)) {
        value = InitialValue(variable);
        return true;
    }
    const CAssignments &assignments = section_.SheetData()->Assignments();
    const std::shared_ptr<const TVariableUses> uses = assignments.UsesOf(variable);
    if (uses->publishers.empty()) {
        return false;
    }
    bool given_up = false;
    CItem *item = FindInRows(variable, *uses, given_up);
    if (given_up) {
        return false;
    }
    if (item == nullptr && section_.Names() != nullptr) {
        item = LastWritten(section_.Names()->Items(), variable);
    }
    if (item == nullptr && node == nullptr) {
        item = assignments.LastPublisher(variable, section_.Serial());
    }
    value = item != nullptr ? item->ValueInScopes() : InitialValue(variable);
    return true;
}

/// The last item before the row that publishes in a line of the same section. Keys that come once are among the first,
/// as many as the definition has.
CItem *CReadTimeVariables::FindInRows(const CVariable &variable, const TVariableUses &uses, bool &given_up) {
    const auto use = std::find_if(uses.publishers.begin(), uses.publishers.end(), [this](const TSectionUse &each) {
        return each.section == section_.Definition() && !each.keys.empty();
    });
    if (use == uses.publishers.end()) {
        return nullptr;
    }
    const auto &keys = section_.Keys();
    const bool repeated =
        std::any_of(use->keys.begin(), use->keys.end(), [](const CKeyDef *key) { return key->Has(nfMultiple); });
    std::size_t index = section_.IndexOf(key_);
    index = repeated ? index : std::min(index, use->section->Keys().size());
    for (std::size_t rows = 0; index-- > 0; ++rows) {
        given_up = repeated && rows == kMostRows;
        CItem *const item =
            !given_up && use->Holds(keys[index]->Definition()) ? LastWritten(*keys[index], variable) : nullptr;
        if (given_up || item != nullptr) {
            return item;
        }
    }
    return nullptr;
}

/// What the template gives the variable, as far as it is still known: variables of the root scope forget it.
TParValue CReadTimeVariables::InitialValue(const CVariable &variable) const {
    const CDefNode *const node = variable.Scope().Node();
    const CDefNode *const definition = node == &key_       ? static_cast<const CDefNode *>(key_.Definition())
                                       : node == &section_ ? section_.Definition()
                                                           : nullptr;
    if (definition == nullptr || definition->Scope() == nullptr) {
        return TParValue::Undefined();
    }
    const auto found = definition->Scope()->Variables().find(variable.Name());
    return found != definition->Scope()->Variables().end() ? found->second->Stored() : TParValue::Undefined();
}

}  // namespace kq_pdt
