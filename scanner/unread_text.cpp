#include "scanner/unread_text.h"

#include "scanner/tape_reader.h"

namespace par_scanner {

namespace {

/// Walks the lines as the scanner does and notes where it gives up.
class CUnreadSearch {
public:
    explicit CUnreadSearch(std::string_view text) {
        tape_.InitBuffer(text.data(), static_cast<std::uint32_t>(text.size()));
    }

    std::vector<TUnreadText> Run() {
        bool at_line_start = true;
        for (TPosition place = tape_.GetPosition(); Read(place); place = tape_.GetPosition()) {
            if (token_.kind == kLineEnd) {
                at_line_start = true;
            } else if (token_.kind == kLeftBracket && at_line_start) {
                ReadHeader(place);
            } else if (token_.kind != kBlank) {
                at_line_start = false;
                NoteAheadOfHeader(place);
            }
        }
        return std::move(found_);
    }

private:
    /// False at the end of the text and at a failure, which is noted.
    bool Read(const TPosition &place) {
        std::uint32_t error = 0;
        if (failed_) {
            return false;
        }
        if (!tape_.ReadToken(error, token_, true)) {
            found_.push_back({place.line, place.lineIndex, TUnreadReason::readerFailure});
            failed_ = true;
            return false;
        }
        return token_.kind != kEndOfInput && tape_.ReadToken(error, token_, false);
    }

    /// Reads on behind a `[` to the end of its line. What follows the closing bracket is ignored on purpose.
    void ReadHeader(const TPosition &bracket) {
        bool closed = false;
        for (TPosition place = tape_.GetPosition(); Read(place); place = tape_.GetPosition()) {
            closed = closed || token_.kind == kRightBracket;
            if (token_.kind == kLineEnd) {
                break;
            }
        }
        if (closed) {
            in_section_ = true;
        } else if (in_section_) {
            found_.push_back({bracket.line, bracket.lineIndex, TUnreadReason::malformedHeader});
        } else {
            NoteAheadOfHeader(bracket);
        }
    }

    void NoteAheadOfHeader(const TPosition &place) {
        const bool carriage_return = token_.kind == kIdentifier && token_.View() == "\r";
        if (!in_section_ && !noted_ahead_ && !carriage_return) {
            noted_ahead_ = true;
            found_.push_back({place.line, place.lineIndex, TUnreadReason::aheadOfHeader});
        }
    }

    CTapeReader tape_;
    TToken token_;
    bool in_section_ = false;
    bool noted_ahead_ = false;
    bool failed_ = false;
    std::vector<TUnreadText> found_;
};

}  // namespace

std::vector<TUnreadText> FindUnreadText(std::string_view text) { return CUnreadSearch(text).Run(); }

}  // namespace par_scanner
