#include "template/keyword_reader.h"

#include <array>

#include "platform/base/code_page.h"

namespace kq_pdt {

using namespace kq_base::literals;
using par_scanner::TToken;

namespace {

constexpr std::uint32_t kIdentifier = 1;
constexpr std::uint32_t kString = 2;
constexpr std::uint32_t kNumber = 3;
constexpr std::uint32_t kFirstOperator = 4;
constexpr std::uint32_t kLastOperator = 36;
constexpr std::uint32_t kEndOfInput = 38;

void AppendOperator(kq_base::TText &message, std::uint32_t kind) {
    std::array<char, 8> text{};
    par_scanner::TokenKindToString(kind, static_cast<std::uint32_t>(text.size() - 1), text.data());
    message.Append(text.data());
}

}  // namespace

void CKeywordReader::NextToken() {
    if (failed_) {
        return;
    }
    std::uint32_t error = 0;
    if (!ReadToken(error, token_, false)) {
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
        Fail("Očekáván "_cp, {kind});
        return false;
    }
    NextToken();
    return true;
}

std::string_view CKeywordReader::TokenText() const {
    const bool has_text = (token_.kind >= kIdentifier && token_.kind <= kNumber) || token_.kind >= kFirstKeyword;
    return has_text ? std::string_view(token_.text, token_.length) : std::string_view();
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
            message.Append("identifikátor"_cp);
            break;
        case kString:
            message.Append("řetězec"_cp);
            break;
        case kNumber:
            message.Append("číslo"_cp);
            break;
        default:
            if (kind >= kFirstOperator && kind <= kLastOperator) {
                AppendOperator(message, kind);
            } else {
                message.Append(KeywordText(kind));
            }
    }
}

void CKeywordReader::ClearFailure() {
    failed_ = false;
    message_.Clear();
}

}  // namespace kq_pdt
