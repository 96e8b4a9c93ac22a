#include "configurator/disabled_reason.h"

#include <algorithm>
#include <vector>

#include "configurator/describe.h"
#include "configurator/node_names.h"
#include "configurator/texts.h"
#include "model/sheet_data.h"

namespace kq_pdt {

namespace {

/// The item of a list that has a cell; cell counts down by the cells that were passed.
CItem *FindInList(const CItemSeq &items, std::uint32_t &cell) {
    for (const auto &item : items.Items()) {
        const std::uint32_t cells = item->GetCellCount();
        if (cell <= cells) {
            return item.get();
        }
        cell -= cells;
    }
    return nullptr;
}

CItem *FindItem(CDefNode &node, std::uint32_t cell) {
    CItem *item = node.Names() != nullptr && cell != 0 ? FindInList(node.Names()->Items(), cell) : nullptr;
    if (node.Has(nfKey) && cell != 0) {
        const auto &pars = static_cast<CKeyDef &>(node).Pars();
        for (auto par = pars.begin(); par != pars.end() && item == nullptr; ++par) {
            item = FindInList((*par)->Items(), cell);
        }
    }
    return item;
}

/// The names of the variables in an expression, each once, in the order in which they come.
std::vector<std::string_view> VariablesOf(const CExpression &expression) {
    std::vector<std::string_view> names;
    for (const CExprNode &node : expression.Nodes()) {
        const std::string_view name = node.value.text.View();
        if (node.kind == TExprKind::kReference && std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
    }
    return names;
}

std::string ValueText(const TParValue &value) {
    switch (value.kind) {
        case TParKind::pvText:
            return kq_cfg::LiteralText(value.text.View());
        case TParKind::pvNumber:
            return std::to_string(value.number);
        case TParKind::pvBool:
            return std::string(value.IsTrue() ? texts::kTrue : texts::kFalse);
        case TParKind::pvNewChannel:
            return std::string(texts::kNewChannelValue);
        default:
            return std::string(texts::kNoValue);
    }
}

/// Where the user finds an item: " (Typ linky, sekce Line1)". Of rows that may come several times also the name.
std::string PlaceText(const CItem &item) {
    CDefNode *node = item.Owner() != nullptr ? item.Owner()->Node() : nullptr;
    if (node == nullptr) {
        return "";
    }
    CKeyDef *key = node->Has(nfKey) ? static_cast<CKeyDef *>(node) : nullptr;
    CSectionDef &section = key != nullptr ? *key->Section() : static_cast<CSectionDef &>(*node);
    std::string text(item.Attributes().label.View());
    if (key != nullptr) {
        const std::string name = ShownName(section, *key);
        const bool labelled = !text.empty() || !key->Label().IsEmpty();
        text = text.empty() ? std::string(key->Label().View()) : text;
        text += !labelled ? name : key->Has(nfMultiple) ? std::string(texts::kOfRow) + name : "";
    }
    const std::string place = std::string(texts::kOfSection) + ShownName(section);
    return " (" + (text.empty() ? place.substr(2) : text + place) + ")";
}

}  // namespace

std::string DisabledReason(CSectionDef &section, CKeyDef *key, std::uint32_t cell) {
    CParSheetData &data = *section.SheetData();
    const CScopeGuard section_scope(&section);
    const CScopeGuard key_scope(key);
    const CItem *const item = FindItem(key != nullptr ? static_cast<CDefNode &>(*key) : section, cell);
    if (item == nullptr || item->IsEnabled()) {
        return {};
    }
    const CExpression &condition = item->Attributes().enable_if->Expression();
    std::string text = std::string(texts::kCondition) + kq_cfg::ExpressionText(kq_cfg::Describe(condition));
    std::string_view before = texts::kPresentValues;
    for (const std::string_view name : VariablesOf(condition)) {
        const CVariable *const variable = data.FindVariable(name);
        const CItem *const source = variable != nullptr ? data.Assignments().LastPublisher(*variable) : nullptr;
        text.append(before).append("%").append(name).append("% = ");
        text += ValueText(variable != nullptr ? variable->Stored() : TParValue::Undefined());
        text += source != nullptr ? PlaceText(*source) : "";
        before = "; ";
    }
    return text;
}

}  // namespace kq_pdt
