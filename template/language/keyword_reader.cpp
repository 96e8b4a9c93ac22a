#include "template/language/keyword_reader.h"

#include "template/language/texts.h"

namespace kq_pdt {

using par_scanner::kEndOfInput;
using par_scanner::kIdentifier;
using par_scanner::kNumber;
using par_scanner::kString;

namespace {

// A blank has no name: it would be a second blank.
std::string_view OperatorText(std::uint32_t kind) {
    return kind == par_scanner::kBlank ? std::string_view() : par_scanner::TokenKindText(kind);
}

}  // namespace

void CKeywordReader::NextToken() {
    if (failed_) {
        return;
    }
    std::uint32_t error = 0;  // why a token can't be read doesn't matter
    if (!ReadTokenInPlace(error, token_)) {
        token_.kind = kEndOfInput;
        return;
    }
    if (token_.kind == kIdentifier) {
        const std::uint32_t keyword = FindKeyword(TokenText());
        token_.kind = keyword != 0 ? keyword : kIdentifier;
    }
}

bool CKeywordReader::Expect(std::uint32_t kind) {
    if (failed_) {
        return false;
    }
    if (token_.kind != kind) {
        Fail(texts::kExpected, {kind});
        return false;
    }
    NextToken();
    return true;
}

std::string_view CKeywordReader::TokenText() const {
    const bool has_text = (token_.kind >= kIdentifier && token_.kind <= kNumber) || token_.kind >= kFirstKeyword;
    return has_text ? token_.View() : std::string_view();
}

void CKeywordReader::Fail(std::string_view text) {
    if (!failed_) {
        failed_ = true;
        message_ = text;
    }
}

void CKeywordReader::Fail(std::string_view prefix, std::initializer_list<std::uint32_t> kinds) {
    if (!failed_) {
        FailInstead(prefix, kinds);
    }
}

void CKeywordReader::FailInstead(std::string_view prefix, std::initializer_list<std::uint32_t> kinds) {
    failed_ = true;
    message_ = prefix;
    for (const std::uint32_t kind : kinds) {
        AppendTokenName(message_, kind);
    }
}

void CKeywordReader::AppendTokenName(kq_base::TText &message, std::uint32_t kind) {
    message.Append(" ");
    switch (kind) {
        case kIdentifier:
            message.Append(texts::kIdentifier);
            break;
        case kString:
            message.Append(texts::kString);
            break;
        case kNumber:
            message.Append(texts::kNumber);
            break;
        default:
            message.Append(kind < kFirstKeyword ? OperatorText(kind) : KeywordText(kind));
    }
}

void CKeywordReader::ClearFailure() {
    failed_ = false;
    message_.Clear();
}

}  // namespace kq_pdt
