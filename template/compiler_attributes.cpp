// The attribute block of a value item or of a channel group. Every attribute is taken on every item; an item ignores
// what it has no use for.

#include "model/sheet_data.h"
#include "template/compiler.h"
#include "template/texts.h"

namespace kq_pdt {

using par_scanner::kComma;
using par_scanner::kEqual;
using par_scanner::kIdentifier;
using par_scanner::kNumber;
using par_scanner::kPercent;
using par_scanner::kRightBrace;
using par_scanner::kSemicolon;
using par_scanner::kString;

void CPdtCompiler::SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text) {
    item_->SetAttribute(keyword, form, text, scope_);
}

/// The block ends at `}`, or at anything but `;` after an attribute: that is left to the statement that called.
void CPdtCompiler::ParseAttributes() {
    while (!Failed()) {
        if (Kind() == kRightBrace) {
            NextToken();
            return;
        }
        if (!ParseAttribute()) {
            return;
        }
        if (Kind() == kRightBrace) {
            NextToken();
            return;
        }
        if (Kind() != kSemicolon) {
            return;
        }
        NextToken();
    }
}

/// False after a failure.
bool CPdtCompiler::ParseAttribute() {
    const std::uint32_t keyword = Kind();
    switch (keyword) {
        case kwWriteIfAll:
            NextToken();
            SetAttribute(keyword, keyword, {});
            break;
        case kwDefault:
            NextToken();
            ParseDefault();
            break;
        case kwType:
        case kwDirection:
            NextToken();
            ParseGroupRow(keyword);
            break;
        case kwChType:
        case kwChDirection:
            NextToken();
            ParseChannelMap(keyword);
            break;
        case kwRangeFrom:
        case kwRangeTo:
            NextToken();
            ParseRange(keyword);
            break;
        case kwChannelRange:
            NextToken();
            SetAttribute(kwRangeFrom, formNumber, "1");
            SetAttribute(kwRangeTo, formNumber, "2147483647");
            break;
        case kwId:
            NextToken();
            ParseId();
            break;
        case kwOption:
            NextToken();
            ParseOption();
            break;
        case kwNedef:
        case kwLabel:
        case kwBubble:
        case kwComment:
        case kwProcedure:
            NextToken();
            ParseTextAttribute(keyword);
            break;
        case kwLoadPdt:
        case kwOptional:
        case kwChNumber:
        case kwReadAll:
        case kwFloating:
        case kwNoCaseSensitive:
            NextToken();
            ParseBareAttribute(keyword);
            break;
        case kwChFrom:
        case kwChTo:
            NextToken();
            ParseChannelBound(keyword);
            break;
        case kwChCount:
            NextToken();
            ParseChannelCount();
            break;
        case kwEnableIf:
            NextToken();
            ParseEnableIf();
            break;
        default:
            Fail(texts::kExpectedOneOf, {kwDefault, kwRangeFrom, kwRangeTo, kwId, kwLabel, kwComment, kwBubble,
                                         kwProcedure, kwLoadPdt, kwOptional, kwEnableIf, kwChNumber, kwChFrom, kwChTo,
                                         kwChType, kwChDirection, kwWriteIfAll, kwFloating});
    }
    return !Failed();
}

void CPdtCompiler::ParseBareAttribute(std::uint32_t keyword) {
    if (!Failed() && Kind() == kEqual) {
        Fail(texts::kExpectedOneOf, {kEqual, kSemicolon});
        return;
    }
    SetAttribute(keyword, keyword, {});
}

void CPdtCompiler::ParseRange(std::uint32_t keyword) {
    if (!Expect(kEqual)) {
        return;
    }
    if (Kind() != kNumber) {
        Fail({});
        return;
    }
    SetAttribute(keyword, formNumber, TokenText());
    NextToken();
}

void CPdtCompiler::ParseId() {
    if (!Expect(kEqual) || !Expect(kPercent)) {
        return;
    }
    if (Kind() != kIdentifier) {
        Fail({});
        return;
    }
    EnterScopes();
    SetAttribute(kwId, formVariable, TokenText());
    LeaveScopes();
    NextToken();
    Expect(kPercent);
}

/// The label comes second in the text but reaches the item first, which keeps it for the entry that follows.
void CPdtCompiler::ParseOption() {
    Expect(kEqual);
    ParseText();
    if (Failed()) {
        return;
    }
    const kq_base::CTextBuffer text = text_;
    if (Kind() == kwLabel) {
        NextToken();
        Expect(kEqual);
        ParseText();
        if (Failed()) {
            return;
        }
        SetAttribute(kwOption, kwLabel, text_.View());
    }
    SetAttribute(kwOption, formText, text.View());
}

void CPdtCompiler::ParseTextAttribute(std::uint32_t keyword) {
    Expect(kEqual);
    ParseText();
    if (!Failed()) {
        SetAttribute(keyword, formText, text_.View());
    }
}

void CPdtCompiler::ParseDefault() {
    if (!Expect(kEqual)) {
        return;
    }
    if (std::optional<TParValue> literal = ParseLoneLiteral()) {
        item_->SetDefault(CDefaultValue(std::move(*literal)));
        return;
    }
    EnterScopes();
    if (std::unique_ptr<CExpression> expression = ParseTree()) {
        item_->SetDefault(CDefaultValue(std::move(expression)));
    }
    LeaveScopes();
}

/// Any one token is taken as the word; a word that means nothing counts as undefined where it is shown or written.
void CPdtCompiler::ParseGroupRow(std::uint32_t keyword) {
    std::unique_ptr<CExpression> condition = ParseWholeExpression();
    if (!Expect(kComma)) {
        return;
    }
    item_->SetExpression(keyword, Kind(), std::move(condition));
    NextToken();
}

void CPdtCompiler::ParseChannelMap(std::uint32_t keyword) {
    if (Failed()) {
        return;
    }
    if (Kind() == kPercent) {
        NextToken();
        if (Failed() || Kind() != kIdentifier) {
            Fail({});
            return;
        }
        EnterScopes();
        SetAttribute(keyword, formVariable, TokenText());
        LeaveScopes();
        NextToken();
        Expect(kPercent);
    }
    if (!Failed() && Kind() == kString) {
        SetAttribute(keyword, formText, TokenText());
        NextToken();
    }
    if (!Expect(kEqual)) {
        return;
    }
    if (Kind() <= kFirstKeyword) {
        Fail(texts::kExpectedOneOf, {kwString});
        return;
    }
    SetAttribute(keyword, Kind(), TokenText());
    NextToken();
}

void CPdtCompiler::ParseChannelBound(std::uint32_t keyword) {
    if (Failed() || Kind() != kEqual) {
        if (!Failed()) {
            SetAttribute(keyword, keyword, {});
        }
        return;
    }
    NextToken();
    if (group_ == nullptr) {
        Fail(texts::kBadGroup);
        return;
    }
    if (std::unique_ptr<CExpression> expression = ParseWholeExpression()) {
        group_->SetBound(keyword, std::move(expression));
    }
}

void CPdtCompiler::ParseChannelCount() {
    if (Failed()) {
        return;
    }
    if (Kind() == kSemicolon) {
        SetAttribute(kwChCount, kwChCount, {});
    } else if (Kind() == kEqual) {
        NextToken();
        if (!Failed() && Kind() == kNumber) {
            SetAttribute(kwChCount, formNumber, TokenText());
        }
        Expect(kNumber);
    } else {
        Fail(texts::kExpectedOneOf, {kSemicolon, kEqual});
    }
}

void CPdtCompiler::ParseEnableIf() {
    if (std::unique_ptr<CExpression> expression = ParseWholeExpression()) {
        item_->EditAttributes().enable_if = std::make_unique<CEnableIf>(std::move(expression));
    }
}

}  // namespace kq_pdt
