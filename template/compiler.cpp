#include "template/compiler.h"

#include "driver/channels/channel_range_table.h"
#include "model/sheet_data.h"
#include "platform/base/number_text.h"
#include "template/texts.h"

namespace kq_pdt {

using par_scanner::kComma;
using par_scanner::kEndOfInput;
using par_scanner::kEqual;
using par_scanner::kIdentifier;
using par_scanner::kLeftBrace;
using par_scanner::kNumber;
using par_scanner::kPercent;
using par_scanner::kSemicolon;
using par_scanner::kString;

void CPdtCompiler::Init(CParSheetData &sheet_data, std::string_view text, CVarScope &root_scope,
                        CSectionList &sections) {
    InitDString(text);
    sheet_data_ = &sheet_data;
    scope_ = &root_scope;
    sections_ = &sections;
}

void CPdtCompiler::Finish(TCompileResult &result) {
    result.message = Message();
    result.line = GetLine();
    result.position = GetLineIndex();
    result.no_channels = no_channels_;
    result.channels = fixed_channels_;
}

bool CPdtCompiler::Compile(CChannelRangeTable *ranges, CNameList *keywords, TCompileResult &result) {
    if (ranges == nullptr) {
        return false;
    }
    ranges_ = ranges;
    keywords_ = keywords;
    no_channels_ = false;
    ClearFailure();
    NextToken();
    ParseTopLevel();
    Finish(result);
    return !Failed();
}

bool CPdtCompiler::CompileValueList(std::unique_ptr<CItemList> &list, TCompileResult &result) {
    ClearFailure();
    NextToken();
    list = std::make_unique<CItemList>();
    item_list_ = list.get();
    ParseValueList();
    Expect(kEndOfInput);
    Finish(result);
    return !Failed();
}

bool CPdtCompiler::CompileExpression(std::unique_ptr<CExpression> &expression, TCompileResult &result) {
    ClearFailure();
    NextToken();
    expression = ParseWholeExpression();
    Expect(kEndOfInput);
    Finish(result);
    return !Failed();
}

void CPdtCompiler::ParseTopLevel() {
    while (!Failed()) {
        switch (Kind()) {
            case kwDefSection:
                NextToken();
                ParseSection();
                break;
            case kwKeywords:
                NextToken();
                ParseKeywords();
                break;
            case kwNoChannels:
                NextToken();
                no_channels_ = true;
                Expect(kSemicolon);
                break;
            case kwVerFrom:
                NextToken();
                ParseVersion();
                break;
            case kwChannels:
                NextToken();
                ParseFixedChannels();
                break;
            case kEndOfInput:
                return;
            default:
                Fail(texts::kExpected, {kwDefSection});
        }
    }
}

void CPdtCompiler::ParseKeywords() {
    Expect(kEqual);
    for (bool more = true; more && !Failed();) {
        if (keywords_ == nullptr || Kind() != kString) {
            Fail(texts::kExpected, {kString});
            return;
        }
        keywords_->emplace_back(TokenText());
        NextToken();
        more = Kind() == kComma;
        if (more) {
            NextToken();
        }
    }
    Expect(kSemicolon);
}

/// A number that isn't plain is an unknown version.
void CPdtCompiler::ParseVersion() {
    Expect(kEqual);
    if (!Failed() && Kind() == kNumber) {
        std::uint32_t version = 0;
        if (!kq_base::ParseDecimal(TokenText(), version) || version > kLanguageVersion) {
            Fail(texts::kBadVersion);
        }
    }
    Expect(kNumber);
    Expect(kSemicolon);
}

bool CPdtCompiler::ParseChannelNumber(std::uint32_t &number) {
    if (Failed()) {
        return false;
    }
    if (Kind() != kNumber || !kq_base::ParseDecimal(TokenText(), number)) {
        Fail(texts::kExpected, {kNumber});
        return false;
    }
    NextToken();
    return true;
}

bool CPdtCompiler::ParseOneOf(bool (*is_one)(std::uint32_t), std::initializer_list<std::uint32_t> expected,
                              std::uint32_t &code) {
    if (Failed()) {
        return false;
    }
    if (!is_one(Kind())) {
        Fail(texts::kExpected, expected);
        return false;
    }
    code = Kind();
    NextToken();
    return true;
}

void CPdtCompiler::ParseFixedChannels() {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::uint32_t type = kUndefinedCode;
    std::uint32_t direction = kUndefinedCode;
    const auto is_type = [](std::uint32_t code) { return IsChannelType(code); };
    const auto is_direction = [](std::uint32_t code) { return IsDirection(code); };
    Expect(kEqual);
    if (!ParseChannelNumber(first) || !Expect(kComma) || !ParseChannelNumber(last) || !Expect(kComma) ||
        !ParseOneOf(is_type, {kwString, kwShortcard, kwBoolean}, type) || !Expect(kComma) ||
        !ParseOneOf(is_direction, {kwInput, kwOutput, kwBidirectional}, direction)) {
        return;
    }
    text_.Clear();
    if (Kind() == kComma) {
        NextToken();
        ParseText();
        if (Failed()) {
            FailInstead(texts::kExpected, {kString});
        }
    }
    if (Expect(kSemicolon)) {
        // What is refused has reported itself; the compile goes on.
        if (ranges_->AddDefined(first, last, type, direction, text_.View())) {
            fixed_channels_.push_back(first);
        }
    }
}

void CPdtCompiler::ParseSection() {
    sections_->push_back(std::make_unique<CSectionDef>(sheet_data_));
    section_ = sections_->back().get();
    while (!Failed() && ParseSectionStatement()) {
    }
}

/// False once the section has ended.
bool CPdtCompiler::ParseSectionStatement() {
    const std::uint32_t kind = Kind();
    switch (kind) {
        case kwName:
            NextToken();
            ParseName(*section_);
            return true;
        case kwDefKey:
            NextToken();
            ParseKey();
            return true;
        case kwRequired:
        case kwMultiple:
            NextToken();
            ParseFlag(*section_, kind == kwRequired ? nfRequired : nfMultiple);
            return true;
        case kwChannels:
            ParseFlag(*section_, nfChannels);
            return true;
        case kwDependOn:
            NextToken();
            ParseDependOn();
            return true;
        case kwVar:
            NextToken();
            ParseVar(*section_);
            return true;
        case kwChannelsGroup:
            NextToken();
            ParseGroup(*section_);
            return true;
        case kwEndSection:
            NextToken();
            return false;
        default:
            Fail(texts::kExpectedOneOf,
                 {kwName, kwDefKey, kwRequired, kwMultiple, kwDependOn, kwChannels, kwEndSection});
            return false;
    }
}

void CPdtCompiler::ParseKey() {
    auto key = std::make_unique<CKeyDef>(sheet_data_);
    key_ = &section_->AddKey(std::move(key));
    while (!Failed() && ParseKeyStatement()) {
    }
    key_ = nullptr;
}

bool CPdtCompiler::ParseKeyStatement() {
    switch (Kind()) {
        case kwName:
            NextToken();
            ParseName(*key_);
            return true;
        case kwLabel:
            NextToken();
            Expect(kEqual);
            ParseText();
            if (!Failed()) {
                key_->SetLabel(text_.View());
            }
            Expect(kSemicolon);
            return true;
        case kwMultiple:
            NextToken();
            ParseFlag(*key_, nfMultiple);
            return true;
        case kwChannels:
            ParseFlag(*key_, nfChannels);
            return true;
        case kwPar:
            NextToken();
            if (Expect(kEqual)) {
                item_list_ = &key_->AddPar().List();
                ParseValueList();
            }
            return true;
        case kwVar:
            NextToken();
            ParseVar(*key_);
            return true;
        case kwChannelsGroup:
            NextToken();
            ParseGroup(*key_);
            return true;
        case kwEndKey:
            NextToken();
            return false;
        default:
            Fail(texts::kExpectedOneOf, {kwName, kwLabel, kwMultiple, kwPar, kwEnableIf, kwEndKey, kwVar});
            return false;
    }
}

/// A node has one name; a second one fails without a text.
void CPdtCompiler::ParseName(CDefNode &node) {
    if (!Expect(kEqual)) {
        return;
    }
    if (node.Names() != nullptr) {
        Fail({});
        return;
    }
    node.SetNames(std::make_unique<CItemList>());
    item_list_ = node.Names();
    ParseValueList();
}

/// `channels` is still the look-ahead here, since after `no_channels` the word itself is the error.
void CPdtCompiler::ParseFlag(CDefNode &node, TNodeFlag flag) {
    if (flag == nfChannels) {
        if (no_channels_) {
            Fail(texts::kNoChannelsHere);
            return;
        }
        NextToken();
    }
    node.SetFlag(flag);
    Expect(kSemicolon);
}

/// Only variables of the root scope are found: sections are created outside every section.
void CPdtCompiler::ParseDependOn() {
    Expect(kEqual);
    Expect(kPercent);
    if (!Failed() && Kind() == kIdentifier) {
        std::unique_ptr<CVarRefItem> variable = scope_->Reference(TokenText());
        if (!variable) {
            Fail(texts::kUndeclared);
        } else if (section_->DependOn() != nullptr) {
            Fail(texts::kSecondDependOn);
        } else {
            section_->SetDependOn(std::move(variable));
        }
    }
    Expect(kIdentifier);
    Expect(kPercent);
    Expect(kSemicolon);
}

void CPdtCompiler::ParseGroup(CDefNode &node) {
    auto group = std::make_unique<CChannelsGroupItem>(sheet_data_);
    group_ = group.get();
    item_ = group.get();
    node.AddGroupItem(std::move(group));
    if (Kind() == kLeftBrace) {
        NextToken();
        ParseAttributes();
    }
    if (!Failed() && Kind() == kSemicolon) {
        NextToken();
    }
}

void CPdtCompiler::EnterScopes() {
    if (section_ != nullptr) {
        section_->EnterScope();
    }
    if (key_ != nullptr) {
        key_->EnterScope();
    }
}

void CPdtCompiler::LeaveScopes() {
    if (key_ != nullptr) {
        key_->LeaveScope();
    }
    if (section_ != nullptr) {
        section_->LeaveScope();
    }
}

std::unique_ptr<CVarRefItem> CPdtCompiler::ReferenceHere() {
    EnterScopes();
    std::unique_ptr<CVarRefItem> reference = scope_->Reference(TokenText());
    LeaveScopes();
    if (!reference) {
        Fail(texts::kUndeclared);
    }
    return reference;
}

}  // namespace kq_pdt
