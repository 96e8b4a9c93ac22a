#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "driver/channels/channel_block_set.h"
#include "scanner/string_tape_reader.h"

namespace kq_drv {

/// Reads the text of a driver map by the rules of channel maps: words in any case, short direction words and `buffer`
/// are taken, and the first entry that doesn't fit is an error. The table of channel ranges has a reader of its own,
/// which knows less and reports nothing.
class CDmfMapReader {
public:
    /// The text and the blocks must outlive the reader.
    CDmfMapReader(std::string_view text, CChannelBlockSet &blocks);

    /// Adds the blocks after the first `begin`. The end of the text, wherever it comes, isn't an error: an entry that
    /// it cuts off is dropped. False gives the reason; the blocks before the error have been added.
    bool Read(std::string &error);
    /// The same for the entries from a position of the text on.
    bool ReadFrom(const par_scanner::TPosition &entry, std::string &error);

private:
    enum class TOutcome : std::uint8_t { kEntry, kFinished, kFailed };

    void NextToken();
    bool AtEnd() const { return token_.kind == par_scanner::kEndOfInput; }
    bool IsWord(std::string_view word) const;
    bool ReadEntries(std::string &error);
    TOutcome ReadEntry();
    TOutcome ReadFirst();
    TOutcome ReadLast();
    TOutcome ReadType();
    TOutcome ReadDirection();
    TOutcome Fail(std::string_view text);
    TOutcome FailAtToken(std::string_view text);

    par_scanner::CStringTapeReader reader_;
    par_scanner::TToken token_;
    std::string word_;  // the token's text, an identifier's in small letters
    CChannelBlock block_;
    CChannelBlockSet &blocks_;
    std::string error_;
};

}  // namespace kq_drv
