#include "tools/print/json_expression.h"

using kq_cfg::TExpr;
using kq_cfg::TExprKind;
using kq_cfg::TValue;
using kq_cfg::TValueKind;
using kq_cfg::TVariables;

TJson ValueJson(const TValue &value) {
    switch (value.kind) {
        case TValueKind::kNone:
            return {{"kind", "none"}};
        case TValueKind::kText:
            return {{"kind", "text"}, {"value", TextJson(value.text)}};
        case TValueKind::kNumber:
            return {{"kind", "number"}, {"value", value.number}};
        case TValueKind::kBool:
            return {{"kind", "bool"}, {"value", value.truth}};
        case TValueKind::kNewChannel:
            return {{"kind", "newChannel"}};
        case TValueKind::kUndefined:
            break;
    }
    return {{"kind", "undefined"}};
}

TJson VariablesJson(const TVariables &variables) {
    // Appended at the end, since operator[] would compare with each key that is there already.
    TJson::object_t object;
    object.reserve(variables.size());
    for (const auto &[name, value] : variables) {
        object.push_back({kq_base::ToUtf8(name), ValueJson(value)});
    }
    return object;
}

namespace {

TJson OperatorJson(const TExpr &expression) {
    TJson json = {{"op", TextJson(expression.text)}};
    if (!expression.operands.empty()) {
        json["left"] = ExprJson(expression.operands.front());
    }
    if (expression.operands.size() > 1) {
        json["right"] = ExprJson(expression.operands[1]);
    }
    return json;
}

}  // namespace

// Recursion is safe here: the compiler limits how deep an expression nests.
TJson ExprJson(const TExpr &expression) {
    switch (expression.kind) {
        case TExprKind::kNumber:
            return {{"number", expression.number}};
        case TExprKind::kText:
            return {{"text", TextJson(expression.text)}};
        case TExprKind::kBool:
            return {{"bool", expression.truth}};
        case TExprKind::kUndefined:
            return {{"undefined", true}};
        case TExprKind::kVariable:
            return {{"variable", TextJson(expression.text)}};
        case TExprKind::kNewChannel:
            return {
                {"newChannel", expression.operands.empty() ? TJson(nullptr) : ExprJson(expression.operands.front())}};
        case TExprKind::kOperator:
            break;
    }
    return OperatorJson(expression);
}
