#include "configurator/node_names.h"

#include <algorithm>

namespace kq_pdt {

namespace {

std::string ShownText(CItemList *names) {
    kq_base::CTextBuffer text;
    if (names != nullptr) {
        names->Items().AppendText(text);
    }
    return std::string(text.View());
}

bool IsConstant(const CDefaultValue &value) {
    const CExpression *expression = value.Expression();
    return expression == nullptr ||
           std::none_of(expression->Nodes().begin(), expression->Nodes().end(), [](const CExprNode &node) {
               return node.kind == TExprKind::kReference || node.kind == TExprKind::kFunction;
           });
}

/// What an item of a definition would show in a new node. A default counts if it can be known without asking for
/// variables and without reserving channels.
void AppendNewText(CItem &item, kq_base::CTextBuffer &text) {
    item.ForceIntoRange();
    const CDefaultValue &default_value = item.Attributes().default_value;
    TParValue value;
    if (default_value.IsGiven() && IsConstant(default_value) && !item.IsUndefined() && item.IsEnabled()) {
        default_value.Evaluate(value);
    }
    if (item.Code() == TItemCode::kNumber && value.IsNumber()) {
        text.AppendDecimal(value.number);
    } else if (item.Code() == TItemCode::kString && value.kind == TParKind::pvText) {
        text.Append(value.text.View());
    } else {
        item.AppendText(text);
    }
}

}  // namespace

std::string ShownName(CSectionDef &section) {
    const CScopeGuard scope(&section);
    return ShownText(section.Names());
}

std::string ShownName(CSectionDef &section, CKeyDef &key) {
    const CScopeGuard section_scope(&section);
    const CScopeGuard scope(&key);
    return ShownText(key.Names());
}

std::string NewNodeText(CDefNode &definition) {
    const CScopeGuard scope(&definition);
    kq_base::CTextBuffer text;
    if (definition.Names() != nullptr) {
        for (const auto &item : definition.Names()->Items().Items()) {
            AppendNewText(*item, text);
        }
    }
    return std::string(text.View());
}

}  // namespace kq_pdt
