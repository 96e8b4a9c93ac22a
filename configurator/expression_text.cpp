#include <algorithm>
#include <array>

#include "configurator/kq_cfg.h"

namespace kq_cfg {

namespace {

/// How tightly operators bind, the loosest first.
enum TLevel { kOr, kAnd, kNot, kEquality, kRelation, kSum, kProduct, kMinus, kOperand };

TLevel LevelOf(const TExpr &expression) {
    struct TRow {
        std::string_view word;
        TLevel level;
    };
    static constexpr std::array<TRow, 15> kLevels = {{{"or", kOr},
                                                      {"and", kAnd},
                                                      {"not", kNot},
                                                      {"=", kEquality},
                                                      {"<>", kEquality},
                                                      {"<", kRelation},
                                                      {"<=", kRelation},
                                                      {">", kRelation},
                                                      {">=", kRelation},
                                                      {"+", kSum},
                                                      {"-", kSum},
                                                      {"*", kProduct},
                                                      {"/", kProduct},
                                                      {"mod", kProduct},
                                                      {"neg", kMinus}}};
    if (expression.kind != TExprKind::kOperator) {
        return kOperand;
    }
    const auto *const row =
        std::find_if(kLevels.begin(), kLevels.end(), [&](const TRow &each) { return each.word == expression.text; });
    return row != kLevels.end() ? row->level : kMinus;
}

/// An operand, in parentheses if it doesn't bind at least as tightly as what stands there without them.
std::string Operand(const TExpr &operand, TLevel loosest) {
    const std::string text = ExpressionText(operand);
    return LevelOf(operand) < loosest ? "(" + text + ")" : text;
}

/// Below `and`, operators without parentheses group to the right whatever they are, and none may follow a product or a
/// minus; so there a left operand with an operator always has parentheses, and a right one unless it binds tighter.
std::string OperatorText(const TExpr &expression) {
    const TLevel level = LevelOf(expression);
    const TExpr &first = expression.operands.front();
    if (level == kMinus) {
        return "-" + Operand(first, kOperand);
    }
    if (level == kNot) {
        return "not " + Operand(first, kEquality);
    }
    const TLevel left = level == kOr ? kAnd : level == kAnd ? kNot : kOperand;
    const TLevel right = level <= kAnd ? level : level <= kRelation ? kSum : level == kSum ? kProduct : kMinus;
    return Operand(first, left) + " " + expression.text + " " + Operand(expression.operands.back(), right);
}

}  // namespace

std::string LiteralText(std::string_view text) {
    std::string literal = "'";
    for (const char character : text) {
        literal.append(character == '\'' ? 2 : 1, character);
    }
    return literal += '\'';
}

// Recursion is safe here: the compiler limits how deep an expression nests.
std::string ExpressionText(const TExpr &expression) {
    switch (expression.kind) {
        case TExprKind::kNumber:
            return std::to_string(expression.number);
        case TExprKind::kText:
            return LiteralText(expression.text);
        case TExprKind::kBool:
            return expression.truth ? "true" : "false";
        case TExprKind::kUndefined:
            return "nedef";
        case TExprKind::kVariable:
            return "%" + expression.text + "%";
        case TExprKind::kNewChannel:
            return "new_channel(" + (expression.operands.empty() ? "" : ExpressionText(expression.operands.front())) +
                   ")";
        case TExprKind::kOperator:
            break;
    }
    return OperatorText(expression);
}

}  // namespace kq_cfg
