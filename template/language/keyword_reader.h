#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "platform/base/bounded_text.h"
#include "scanner/string_tape_reader.h"
#include "template/language/keywords.h"

namespace kq_pdt {

/// The token reader with keywords among its identifiers, one token of look-ahead and one failure.
///
/// A reader starts without a look-ahead: set the text (InitDString) and call NextToken once. What can't be read as a
/// token, an open string for instance, counts as the end of the input.
class CKeywordReader : private par_scanner::CStringTapeReader {
public:
    using CStringTapeReader::GetLine;
    using CStringTapeReader::GetLineIndex;
    using CStringTapeReader::GetPosition;
    using CStringTapeReader::InitDString;

    /// Fetches the next look-ahead token; after a failure the look-ahead stays, which ends every loop over tokens.
    void NextToken();
    /// Steps over a token of this kind; any other token is a failure that names the kind due. False after a failure.
    bool Expect(std::uint32_t kind);

    /// The look-ahead. Its kind is a TKeyword for a keyword; a keyword keeps its text.
    const par_scanner::TToken &Token() const { return token_; }
    std::uint32_t Kind() const { return token_.kind; }
    /// The look-ahead's text, valid until the next token; only for identifiers, keywords, strings and numbers.
    std::string_view TokenText() const;

    /// Records a failure and its message, which may be empty. The first one stays, later ones are ignored.
    void Fail(std::string_view text);
    /// The same with the names of the token kinds that were due after the prefix.
    void Fail(std::string_view prefix, std::initializer_list<std::uint32_t> kinds);
    /// Fails like Fail, but replaces an earlier message: a statement that knows better what was due than the
    /// part of it that failed.
    void FailInstead(std::string_view prefix, std::initializer_list<std::uint32_t> kinds);

    bool Failed() const { return failed_; }
    /// The text of the failure, empty if there is none.
    const kq_base::TText &Message() const { return message_; }

    /// Appends a blank and the name under which users know a token kind; kinds that have no name give the blank alone.
    static void AppendTokenName(kq_base::TText &message, std::uint32_t kind);

protected:
    /// Forgets a failure, for a reader that begins anew.
    void ClearFailure();

private:
    par_scanner::TToken token_;
    bool failed_ = false;
    kq_base::TText message_;
};

}  // namespace kq_pdt
