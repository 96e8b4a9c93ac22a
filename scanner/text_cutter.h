#pragma once

#include <cstdint>
#include <string_view>

#include "scanner/tape_reader.h"

/// How texts are cut from a tape token by token: the rules that hold for every text, whatever it contains.
namespace par_scanner::detail {

/// A set of token kinds, one bit each.
constexpr std::uint64_t KindSet(std::uint32_t kind) { return kind < 64 ? std::uint64_t{1} << kind : 0; }

struct TCut {
    std::string_view text;
    std::uint32_t stop;  ///< the kind that stopped it; kLineEnd if the text ended
    bool end;            ///< the text ended, or reading failed
};

/// The text from first up to last as it is delivered: 255 characters at most, a longer one cut to 254, and up to the
/// first carriage return or NUL.
std::string_view BoundText(const char *first, const char *last);

/// Reads tokens up to and including one of the stops; the text is what precedes it on the tape, without the
/// blanks around it. A carriage return directly before a line feed counts as part of the line end. buffer is the
/// tape.
TCut CutText(CTapeReader &tape, std::string_view buffer, std::uint64_t stops);

/// Reads tokens up to and including one of two kinds; true if that was the first. False as well if reading fails.
bool FindKind(CTapeReader &tape, std::uint32_t kind1, std::uint32_t kind2);

/// Reads tokens as long as they are of these kinds, and puts the tape back before the first other one. Gives the
/// kinds that were seen. Where reading fails the tape is put back too, so that the next reading fails there again.
std::uint64_t SkipKinds(CTapeReader &tape, std::uint64_t kinds);

}  // namespace par_scanner::detail
