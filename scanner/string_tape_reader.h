#pragma once

#include <cstdint>
#include <string_view>

#include "platform/base/dynamic_string.h"
#include "platform/base/export.h"
#include "scanner/tape_reader.h"

namespace par_scanner {

/// Cuts a string of the caller's into tokens as CTapeReader does, with blanks, tabs, carriage returns and line feeds
/// between them skipped: kLineEnd and kBlank never come. The string must stay as it is until the reading ends.
class KQ_API CStringTapeReader : private CTapeReader {
public:
    using CTapeReader::kTextSize;

    CStringTapeReader() = default;

    /// Reads from the characters of a dynamic string; none are copied.
    void InitDString(const TDStringA *text);
    /// Reads from any characters; none are copied.
    void InitDString(std::string_view text);
    /// Forgets the string; every later read fails.
    void Done();

    /// As CTapeReader::ReadToken.
    bool ReadToken(std::uint32_t &error, TToken &token, bool peek) {
        return ReadTokenDirectly(error, token, peek, true);
    }

    using CTapeReader::Copy;
    using CTapeReader::GetLine;
    using CTapeReader::GetLineIndex;
    using CTapeReader::GetPosition;
    using CTapeReader::SetPosition;

protected:
    using CTapeReader::ReadTokenInPlace;

private:
    bool ReadCharacter(std::uint32_t &error, char &character, bool peek) final;
};

}  // namespace par_scanner
