// Value lists, multilingual texts and `var` statements.

#include "model/const_item.h"
#include "model/number_item.h"
#include "model/options_item.h"
#include "model/sheet_data.h"
#include "model/string_item.h"
#include "template/compiler.h"
#include "template/language/host_callback.h"
#include "template/texts.h"

namespace kq_pdt {

using par_scanner::kComma;
using par_scanner::kEqual;
using par_scanner::kIdentifier;
using par_scanner::kLeftBrace;
using par_scanner::kLeftBracket;
using par_scanner::kNumber;
using par_scanner::kPercent;
using par_scanner::kPlus;
using par_scanner::kRightBrace;
using par_scanner::kRightBracket;
using par_scanner::kSemicolon;
using par_scanner::kString;

void CPdtCompiler::ParseValueList() {
    ParseValueItem();
    while (!Failed() && Kind() == kPlus) {
        NextToken();
        ParseValueItem();
    }
    if (!Failed()) {
        ParseListEnd();
    }
}

/// A list may end without `;`: whatever follows is then left to the body that holds the list.
void CPdtCompiler::ParseListEnd() {
    if (Kind() == kSemicolon) {
        NextToken();
    } else if (Kind() == kEqual) {
        NextToken();
        if (!Expect(kPercent)) {
            return;
        }
        if (Kind() == kIdentifier) {
            item_list_->SetListVariable(scope_->Resolve(TokenText(), false));
        }
        Expect(kIdentifier);
        Expect(kPercent);
        Expect(kSemicolon);
    }
}

std::unique_ptr<CItem> CPdtCompiler::ParseItemWord() {
    switch (Kind()) {
        case kString:
        case kLeftBracket:
            ParseText();
            return Failed() ? nullptr : std::make_unique<CConstItem>(text_.View());
        case kwNumber:
            NextToken();
            return std::make_unique<CNumberItem>();
        case kwString:
            NextToken();
            return std::make_unique<CStringItem>();
        case kwOptions:
            NextToken();
            return std::make_unique<COptionsItem>();
        case kwDll:
            NextToken();
            return std::make_unique<CDllItem>(sheet_data_);
        case kPercent:
            NextToken();
            return ParseReference();
        default:
            Fail(texts::kExpectedOneOf, {kString, kwNumber, kwString, kwDll, kPercent});
            return nullptr;
    }
}

/// A variable has to be declared before its use.
std::unique_ptr<CItem> CPdtCompiler::ParseReference() {
    std::unique_ptr<CVarRefItem> reference;
    if (!Failed() && Kind() == kIdentifier) {
        reference = ReferenceHere();
    }
    Expect(kIdentifier);
    Expect(kPercent);
    return reference;
}

void CPdtCompiler::ParseValueItem() {
    if (Failed()) {
        return;
    }
    std::unique_ptr<CItem> item = ParseItemWord();
    if (!item) {
        return;
    }
    item_ = item.get();
    item_list_->Items().Append(std::move(item));
    if (!Failed() && Kind() == kLeftBrace) {
        NextToken();
        ParseAttributes();
    }
}

/// Alternatives of one text, separated by commas: one tagged with the host's language wins over plain ones, a later tag
/// over an earlier one, and of plain ones the first counts.
void CPdtCompiler::ParseText() {
    if (Failed()) {
        return;
    }
    text_.Clear();
    ParseTextItem();
    while (!Failed() && Kind() == kComma) {
        NextToken();
        ParseTextItem();
    }
}

void CPdtCompiler::ParseTextItem() {
    if (Failed()) {
        return;
    }
    if (Kind() == kString) {
        if (text_.IsEmpty()) {
            text_.Append(TokenText());
        }
        NextToken();
    } else if (Kind() == kLeftBracket) {
        NextToken();
        const bool matches = !Failed() && Kind() == kIdentifier && IsCurrentLanguage(TokenText());
        Expect(kIdentifier);
        Expect(kRightBracket);
        if (!Failed() && matches && Kind() == kString) {
            text_.Clear();
            text_.Append(TokenText());
        }
        Expect(kString);
    } else {
        Fail(texts::kExpectedOneOf, {kString, kLeftBracket});
    }
}

void CPdtCompiler::ParseVar(CDefNode &node) {
    while (!Failed() && Kind() == kPercent) {
        NextToken();
        if (Failed() || Kind() != kIdentifier) {
            Fail(texts::kExpected, {kIdentifier});
            return;
        }
        variable_ = &node.DeclareVariable(TokenText());
        NextToken();
        Expect(kPercent);
        if (Failed()) {
            return;
        }
        if (Kind() == kSemicolon) {
            NextToken();
        } else if (Kind() == kLeftBrace) {
            NextToken();
            ParseVarAttributes();
            if (!Failed() && Kind() == kSemicolon) {
                NextToken();
            }
        }
        if (Failed() || Kind() != kComma) {
            return;
        }
        NextToken();
    }
}

void CPdtCompiler::ParseVarAttributes() {
    while (!Failed()) {
        if (Kind() == kRightBrace) {
            NextToken();
            return;
        }
        if (Kind() != kwInitValue) {
            Fail(texts::kExpectedOneOf, {kRightBrace, kwInitValue});
            return;
        }
        NextToken();
        ParseInitValue();
    }
}

void CPdtCompiler::ParseInitValue() {
    if (!Expect(kEqual)) {
        return;
    }
    const std::uint32_t kind = Kind();
    if (kind != kString && kind != kNumber && kind != kwCreateNewChannel) {
        Fail(texts::kExpectedOneOf, {kString, kNumber, kwCreateNewChannel});
        return;
    }
    const std::uint32_t form = kind == kString ? formText : kind == kNumber ? formNumber : kind;
    variable_->SetInitial(kwInitValue, form, TokenText());
    NextToken();
    Expect(kSemicolon);
}

}  // namespace kq_pdt
