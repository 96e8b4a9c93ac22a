// Expressions. The grammar looks as usual, the trees don't: see CExpressionBuilder. Which level puts the cursor back
// and which doesn't is what templates rest on, so the order of steps here must stay.

#include <utility>

#include "model/sheet_data.h"
#include "platform/base/number_text.h"
#include "template/compiler.h"
#include "template/texts.h"

namespace kq_pdt {

using par_scanner::kEqual;
using par_scanner::kGreater;
using par_scanner::kGreaterEqual;
using par_scanner::kIdentifier;
using par_scanner::kLeftParenthesis;
using par_scanner::kLess;
using par_scanner::kLessEqual;
using par_scanner::kMinus;
using par_scanner::kNotEqual;
using par_scanner::kNumber;
using par_scanner::kPercent;
using par_scanner::kPlus;
using par_scanner::kRightParenthesis;
using par_scanner::kSlash;
using par_scanner::kStar;
using par_scanner::kString;

namespace {

constexpr std::string_view kNewChannel = "new_channel";

/// True for what continues an expression after an operand.
bool IsOperator(std::uint32_t kind) {
    switch (kind) {
        case kwOr:
        case kwAnd:
        case kEqual:
        case kNotEqual:
        case kLess:
        case kLessEqual:
        case kGreater:
        case kGreaterEqual:
        case kPlus:
        case kMinus:
        case kStar:
        case kSlash:
        case kwMod:
            return true;
        default:
            return false;
    }
}

}  // namespace

/// Fails if the tree didn't take a node.
bool CPdtCompiler::Accept(CExpressionBuilder::TResult result) {
    if (result == CExpressionBuilder::TResult::kFull) {
        Fail(texts::kAmbiguous);
    } else if (result == CExpressionBuilder::TResult::kTooDeep) {
        Fail(texts::kTooComplex);
    }
    return !Failed();
}

/// Steps over the operator first, so that an error is found at the operand after it.
bool CPdtCompiler::TakeOperator(TExprKind kind) {
    NextToken();
    return !Failed() && Accept(builder_.SetNodeKind(kind));
}

std::unique_ptr<CExpression> CPdtCompiler::ParseWholeExpression() {
    if (Failed()) {
        return nullptr;
    }
    if (std::optional<TParValue> literal = ParseLoneLiteral()) {
        builder_.Clear();
        builder_.AddOperand(TExprKind::kLiteral, std::move(*literal));
        return builder_.Finish(*sheet_data_);
    }
    return ParseTree();
}

/// Most defaults are one literal, which needs no way down through all levels of the grammar. Only if an operator
/// follows they are gone through by ParseTree, and ParseFactor takes the literal that was read.
std::optional<TParValue> CPdtCompiler::ParseLoneLiteral() {
    first_literal_.reset();
    std::optional<TParValue> literal = Literal();
    if (literal) {
        NextToken();
        if (IsOperator(Kind())) {
            first_literal_.swap(literal);
        }
    }
    return literal;
}

std::unique_ptr<CExpression> CPdtCompiler::ParseTree() {
    builder_.Clear();
    ParseExpression();
    return Failed() ? nullptr : builder_.Finish(*sheet_data_);
}

void CPdtCompiler::ParseExpression() {
    if (Failed()) {
        return;
    }
    Attach();
    ParseAnd();
    while (!Failed() && Kind() == kwOr && TakeOperator(TExprKind::kOr)) {
        Attach();
        ParseAnd();
    }
}

void CPdtCompiler::ParseAnd() {
    if (Failed()) {
        return;
    }
    const auto cursor = builder_.Cursor();
    Attach();
    ParseNot();
    while (!Failed() && Kind() == kwAnd && TakeOperator(TExprKind::kAnd)) {
        Attach();
        ParseNot();
    }
    builder_.SetCursor(cursor);
}

void CPdtCompiler::ParseNot() {
    if (Failed()) {
        return;
    }
    if (Kind() != kwNot) {
        ParseEquality();
        return;
    }
    const auto cursor = builder_.Cursor();
    NextToken();
    Attach();
    if (!Failed()) {
        Accept(builder_.SetNodeKind(TExprKind::kNot));
    }
    ParseEquality();
    builder_.SetCursor(cursor);
}

void CPdtCompiler::ParseEquality() {
    if (Failed()) {
        return;
    }
    const auto cursor = builder_.Cursor();
    Attach();
    ParseRelation();
    while (!Failed() && (Kind() == kEqual || Kind() == kNotEqual) &&
           TakeOperator(Kind() == kEqual ? TExprKind::kEqual : TExprKind::kNotEqual)) {
        Attach();
        ParseRelation();
    }
    builder_.SetCursor(cursor);
}

void CPdtCompiler::ParseRelation() {
    if (Failed()) {
        return;
    }
    Attach();
    ParseSum();
    while (!Failed()) {
        TExprKind kind = TExprKind::kGroup;
        switch (Kind()) {
            case kLess:
                kind = TExprKind::kLess;
                break;
            case kLessEqual:
                kind = TExprKind::kLessEqual;
                break;
            case kGreater:
                kind = TExprKind::kGreater;
                break;
            case kGreaterEqual:
                kind = TExprKind::kGreaterEqual;
                break;
            default:
                return;
        }
        if (TakeOperator(kind)) {
            Attach();
            ParseSum();
        }
    }
}

void CPdtCompiler::ParseSum() {
    if (Failed()) {
        return;
    }
    Attach();
    ParseProduct();
    while (!Failed() && (Kind() == kPlus || Kind() == kMinus) &&
           TakeOperator(Kind() == kPlus ? TExprKind::kAdd : TExprKind::kSubtract)) {
        ParseProduct();
    }
}

void CPdtCompiler::ParseProduct() {
    if (Failed()) {
        return;
    }
    Attach();
    ParseFactor();
    while (!Failed() && (Kind() == kStar || Kind() == kSlash || Kind() == kwMod)) {
        const TExprKind kind = Kind() == kStar    ? TExprKind::kMultiply
                               : Kind() == kSlash ? TExprKind::kDivide
                                                  : TExprKind::kModulo;
        if (TakeOperator(kind)) {
            ParseFactor();
        }
    }
}

/// The value of the look-ahead if it is a literal.
std::optional<TParValue> CPdtCompiler::Literal() const {
    std::uint32_t number = 0;
    switch (Kind()) {
        case kNumber:
            return kq_base::ParseDecimal(TokenText(), number) ? std::optional(TParValue::Number(number)) : std::nullopt;
        case kwTrue:
        case kwFalse:
            return TParValue::Bool(Kind() == kwTrue);
        case kwNedef:
            return TParValue::Undefined();
        case kString:
            return TParValue::Text(TokenText());
        default:
            return std::nullopt;
    }
}

void CPdtCompiler::ParseFactor() {
    if (Failed()) {
        return;
    }
    if (first_literal_) {
        Accept(builder_.AddOperand(TExprKind::kLiteral, *std::exchange(first_literal_, std::nullopt)));
        return;
    }
    switch (Kind()) {
        case kLeftParenthesis:
            ParseParentheses();
            return;
        case kIdentifier:
            ParseFunction();
            return;
        case kMinus:
            ParseMinus();
            return;
        case kPercent:
            ParseVariable();
            return;
        default:
            break;
    }
    if (std::optional<TParValue> literal = Literal()) {
        if (Accept(builder_.AddOperand(TExprKind::kLiteral, std::move(*literal)))) {
            NextToken();
        }
        return;
    }
    Fail(texts::kExpectedOneOf, {kNumber, kString, kPercent, kLeftParenthesis, kwTrue, kwFalse});
}

void CPdtCompiler::ParseParentheses() {
    if (!builder_.HasFreeSlot()) {
        Fail(texts::kAmbiguous);
        return;
    }
    NextToken();
    const auto cursor = builder_.Cursor();
    Accept(builder_.AttachParentheses());
    ParseExpression();
    builder_.SetCursor(cursor);
    Expect(kRightParenthesis);
}

/// The argument is a tree of its own, which an operator after the function doesn't reach.
void CPdtCompiler::ParseFunction() {
    if (TokenText() != kNewChannel) {
        Fail(texts::kFunctionExpected);
        return;
    }
    if (!builder_.HasFreeSlot()) {
        Fail(texts::kAmbiguous);
        return;
    }
    NextToken();
    const CExpressionBuilder::TSavedTree saved = builder_.BeginArgument();
    if (Expect(kLeftParenthesis)) {
        ParseExpression();
        Expect(kRightParenthesis);
    }
    if (!Failed()) {
        Accept(builder_.EndArgument(saved));
    }
}

void CPdtCompiler::ParseMinus() {
    if (!builder_.HasFreeSlot()) {
        Fail(texts::kAmbiguous);
        return;
    }
    NextToken();
    Attach();
    if (!Failed() && Accept(builder_.SetNodeKind(TExprKind::kNegate))) {
        ParseFactor();
    }
}

void CPdtCompiler::ParseVariable() {
    if (!builder_.HasFreeSlot()) {
        Fail(texts::kAmbiguous);
        return;
    }
    NextToken();
    if (Failed() || Kind() != kIdentifier) {
        Fail(texts::kExpectedOneOf, {kIdentifier});
        return;
    }
    if (!ReferenceHere()) {
        return;
    }
    if (Accept(builder_.AddOperand(TExprKind::kReference, TParValue::Text(TokenText())))) {
        NextToken();
        Expect(kPercent);
    }
}

}  // namespace kq_pdt
