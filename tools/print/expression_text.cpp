#include "tools/print/expression_text.h"

#include "platform/base/code_page.h"

using kq_cfg::TExpr;
using kq_cfg::TExprKind;
using kq_cfg::TValue;
using kq_cfg::TValueKind;

std::string QuotedText(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted.append(character == '\'' ? 2 : 1, character);
    }
    return kq_base::ToUtf8(quoted += '\'');
}

std::string ValueText(const TValue &value) {
    switch (value.kind) {
        case TValueKind::kNone:
            return "no value";
        case TValueKind::kText:
            return QuotedText(value.text);
        case TValueKind::kNumber:
            return std::to_string(value.number);
        case TValueKind::kBool:
            return value.truth ? "true" : "false";
        case TValueKind::kNewChannel:
            return "create_new_channel";
        case TValueKind::kUndefined:
            break;
    }
    return "nedef";
}

namespace {

std::string OperandText(const TExpr &operand) {
    const std::string text = ExprText(operand);
    return operand.kind == TExprKind::kOperator ? "(" + text + ")" : text;
}

std::string OperatorText(const TExpr &expression) {
    const std::string sign = kq_base::ToUtf8(expression.text);
    const std::string left = expression.operands.empty() ? "" : OperandText(expression.operands.front());
    if (expression.operands.size() < 2) {
        return sign == "neg" ? "-" + left : sign + " " + left;
    }
    return left + " " + sign + " " + OperandText(expression.operands[1]);
}

}  // namespace

// Recursion is safe here: the compiler limits how deep an expression nests.
std::string ExprText(const TExpr &expression) {
    switch (expression.kind) {
        case TExprKind::kNumber:
            return std::to_string(expression.number);
        case TExprKind::kText:
            return QuotedText(expression.text);
        case TExprKind::kBool:
            return expression.truth ? "true" : "false";
        case TExprKind::kUndefined:
            return "nedef";
        case TExprKind::kVariable:
            return "%" + kq_base::ToUtf8(expression.text) + "%";
        case TExprKind::kNewChannel:
            return "new_channel(" + (expression.operands.empty() ? "" : ExprText(expression.operands.front())) + ")";
        case TExprKind::kOperator:
            break;
    }
    return OperatorText(expression);
}
