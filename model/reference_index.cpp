#include "model/reference_index.h"

#include <algorithm>

#include "model/var_ref_item.h"

namespace kq_pdt {

namespace {

bool Declares(const CDefNode &node, std::string_view name) {
    return node.Scope() != nullptr && node.Scope()->Variables().contains(name);
}

}  // namespace

bool TSectionUse::Holds(const CKeyDef *definition) const {
    if (definition == nullptr) {
        return false;
    }
    const auto found = std::lower_bound(keys.begin(), keys.end(), definition->Index(),
                                        [](const CKeyDef *key, std::size_t index) { return key->Index() < index; });
    return found != keys.end() && *found == definition;
}

void CReferenceIndex::Rebuild(const CSectionList &definitions) {
    uses_.clear();
    dependents_.clear();
    for (const auto &section : definitions) {
        if (section->Names() != nullptr) {
            AddItems(section->Names()->Items(), *section, nullptr);
        }
        AddGroups(*section, *section, nullptr);
        for (const auto &key : section->Keys()) {
            if (key->Names() != nullptr) {
                AddItems(key->Names()->Items(), *section, key.get());
            }
            for (const auto &par : key->Pars()) {
                AddItems(par->Items(), *section, key.get());
            }
            AddGroups(*key, *section, key.get());
        }
        const CVarRefItem *depend_on = section->DependOn();
        if (depend_on != nullptr && !Declares(*section, depend_on->Name())) {
            dependents_.try_emplace(std::string(depend_on->Name()), section.get());
        }
    }
}

void CReferenceIndex::AddItems(const CItemSeq &items, CSectionDef &section, const CKeyDef *key) {
    for (const auto &item : items.Items()) {
        AddAttributes(*item, section, key);
        if (item->IdVariable() != nullptr) {
            AddUse(item->IdVariable()->Name(), true, section, key);
        }
    }
}

void CReferenceIndex::AddGroups(const CDefNode &node, CSectionDef &section, const CKeyDef *key) {
    for (const auto &group : node.Groups()) {
        AddAttributes(*group, section, key);
        AddExpression(group->From(), section, key);
        AddExpression(group->To(), section, key);
        for (const auto *rows : {group->TypeRows().get(), group->DirectionRows().get()}) {
            if (rows != nullptr) {
                for (const CChannelCondRow &row : *rows) {
                    AddExpression(row.condition.get(), section, key);
                }
            }
        }
    }
}

void CReferenceIndex::AddAttributes(const CItem &item, CSectionDef &section, const CKeyDef *key) {
    const TItemAttributes &attributes = item.Attributes();
    if (attributes.enable_if) {
        AddExpression(&attributes.enable_if->Expression(), section, key);
    }
    AddExpression(attributes.default_value.Expression(), section, key);
    if (attributes.channel) {
        for (const auto *reference :
             {attributes.channel->type_variable.get(), attributes.channel->direction_variable.get()}) {
            if (reference != nullptr) {
                AddUse(reference->Name(), false, section, key);
            }
        }
    }
}

void CReferenceIndex::AddExpression(const CExpression *expression, CSectionDef &section, const CKeyDef *key) {
    if (expression == nullptr) {
        return;
    }
    for (const CExprNode &node : expression->Nodes()) {
        if (node.kind == TExprKind::kReference) {
            AddUse(node.value.text.View(), false, section, key);
        }
    }
}

void CReferenceIndex::AddUse(std::string_view name, bool publishes, CSectionDef &section, const CKeyDef *key) {
    if (key != nullptr && Declares(*key, name)) {
        return;
    }
    const CSectionDef *scope = Declares(section, name) ? &section : nullptr;
    auto &entry = uses_[{scope, std::string(name)}];
    if (!entry) {
        entry = std::make_shared<TVariableUses>();
    }
    auto &uses = publishes ? entry->publishers : entry->readers;
    if (uses.empty() || uses.back().section != &section) {
        uses.push_back({&section, false, {}});
    }
    if (key == nullptr) {
        uses.back().in_section = true;
    } else if (uses.back().keys.empty() || uses.back().keys.back() != key) {
        uses.back().keys.push_back(key);
    }
}

std::shared_ptr<const TVariableUses> CReferenceIndex::Find(const CSectionDef *scope, std::string_view name) const {
    static const auto kNobody = std::make_shared<const TVariableUses>();
    const auto found = uses_.find({scope, std::string(name)});
    return found != uses_.end() ? found->second : kNobody;
}

CSectionDef *CReferenceIndex::Dependent(std::string_view name) const {
    const auto found = dependents_.find(name);
    return found != dependents_.end() ? found->second : nullptr;
}

}  // namespace kq_pdt
