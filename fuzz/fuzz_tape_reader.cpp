// The token reader over any bytes: both forms and all sources of characters, beside the plain rules.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanner/string_tape_reader.h"
#include "tests/scanner/reference_reader.h"

namespace {

using namespace par_scanner;

/// A subclass that has its own source of characters.
class COutsideReader : public CTapeReader {
public:
    bool ReadCharacter(std::uint32_t &error, char &character, bool peek) override {
        return CTapeReader::ReadCharacter(error, character, peek);
    }
};

/// Reads as the template compiler does.
class CReaderInPlace : public CStringTapeReader {
public:
    bool ReadToken(std::uint32_t &error, TToken &token, bool /*peek*/) { return ReadTokenInPlace(error, token); }
};

void Require(bool truth) {
    if (!truth) {
        std::abort();
    }
}

template <class Reader>
void CompareWithReference(Reader &reader, std::string_view text, bool skipping) {
    CReferenceReader reference(text, skipping);
    for (bool more = true; more;) {
        TToken token;
        std::uint32_t error = 0;
        std::uint32_t expected_error = 0;
        const bool read = reader.ReadToken(error, token, false);
        Require(read == reference.Read(expected_error) && error == expected_error);
        Require(reader.GetPosition() == reference.position);
        if (read) {
            Require(token.kind == reference.kind);
            Require(token.kind > kNumber || token.View() == reference.text);
        }
        more = read || error != 0;
    }
}

/// Bytes as a token stream: every read ends, and says so in one of the ways that it has.
void ReadStream(std::string_view text) {
    CTapeReader reader;
    reader.SetSourceOfCode(CTapeReader::kSourceStream);
    reader.InitBuffer(text.data(), static_cast<std::uint32_t>(text.size()));
    for (bool more = true; more;) {
        TToken token;
        std::uint32_t error = 0;
        const std::uint32_t before = reader.GetPosition().index;
        const bool read = reader.ReadToken(error, token, false);
        Require(!read || reader.GetPosition().index > before);
        Require(read ? token.kind <= kEndOfInput : error == 0 || error == kUnknownStreamKind);
        Require(!read || token.kind == kNoToken || token.kind > kNumber || token.length <= CTapeReader::kTextSize);
        more = read || error != 0;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    CTapeReader raw;
    raw.InitBuffer(text.data(), static_cast<std::uint32_t>(size));
    CompareWithReference(raw, text, false);
    COutsideReader outside;
    outside.InitBuffer(text.data(), static_cast<std::uint32_t>(size));
    CompareWithReference(outside, text, false);
    CStringTapeReader skipping;
    skipping.InitDString(text);
    CompareWithReference(skipping, text, true);
    CReaderInPlace in_place;
    in_place.InitDString(text);
    CompareWithReference(in_place, text, true);
    ReadStream(text);
    return 0;
}
