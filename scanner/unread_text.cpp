#include "scanner/unread_text.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "scanner/tape_reader.h"

namespace par_scanner {

namespace {

/// Goes through the tokens as the scanner does when it looks for sections.
class CUnreadTextSearch {
public:
    explicit CUnreadTextSearch(std::string_view text) : text_(text) {
        tape_.InitBuffer(text.data(), static_cast<std::uint32_t>(text.size()));
    }

    std::vector<TUnreadText> Run() {
        bool at_line_start = true;
        while (Read()) {
            if (token_.kind == kLineEnd) {
                at_line_start = true;
            } else if (token_.kind == kLeftBracket && at_line_start) {
                PassHeader();  // up to the line's end, so that a line starts again
            } else if (token_.kind != kBlank) {
                at_line_start = false;
                if (token_.kind != kIdentifier || token_.View() != "\r") {
                    NoteText(begin_);
                    PassKey();
                }
            }
        }
        if (failed_) {
            Note(AfterComments(begin_), TUnreadReason::kFromReadFailureOn);
        } else if (unfinished_ && in_section_ && !keys_ended_) {
            Note(AfterComments(*unfinished_), TUnreadReason::kUnfinishedLine);
        }
        return std::move(found_);
    }

private:
    /// The next token. False at the end, which is also where reading failed, and from then on.
    bool Read() {
        if (ended_) {
            return false;
        }
        begin_ = tape_.GetPosition();
        std::uint32_t error = 0;
        ended_ = !tape_.ReadToken(error, token_, false);
        failed_ = ended_ && AfterComments(begin_).index < text_.size();
        if (!ended_ && token_.kind == kLineEnd) {
            unfinished_.reset();
            has_value_ = false;
        }
        return !ended_;
    }

    /// Passes a token of a line that is no header. The first begins a key, which has to be followed by `=` or a line
    /// end.
    void PassKey() {
        if (token_.kind == kEqual) {
            unfinished_.reset();
            has_value_ = true;
        } else if (!unfinished_ && !has_value_) {
            unfinished_ = begin_;
        }
    }

    /// Reads on after a `[` that begins a line.
    void PassHeader() {
        const TPosition bracket = begin_;
        unfinished_ = bracket;
        while (Read() && token_.kind != kLineEnd) {
            PassKey();
            if (token_.kind == kRightBracket) {
                in_section_ = true;
                keys_ended_ = false;
                unfinished_.reset();
                while (Read() && token_.kind != kLineEnd) {
                }
                return;
            }
        }
        if (!failed_) {
            NoteMalformed(bracket);
        }
    }

    void NoteMalformed(const TPosition &bracket) {
        NoteText(bracket);
        // After a comment the line is a key like any other.
        if (in_section_ && !keys_ended_ && text_[bracket.index] == '[') {
            Note(bracket, TUnreadReason::kFromMalformedHeaderOn);
            keys_ended_ = true;
        }
    }

    /// Notes text before the first header, once.
    void NoteText(const TPosition &position) {
        if (!in_section_ && found_.empty()) {
            Note(AfterComments(position), TUnreadReason::kBeforeFirstHeader);
        }
    }

    void Note(const TPosition &position, TUnreadReason reason) {
        found_.push_back({position.line, position.lineIndex, reason});
    }

    /// The position after the comments that begin here, as far as they are closed.
    TPosition AfterComments(const TPosition &position) const {
        TPosition after = position;
        TPosition at = position;
        std::uint32_t depth = 0;
        for (;;) {
            const std::string_view two = text_.substr(at.index, 2);
            if (two == "(*") {
                ++depth;
                Pass(at, 2);
            } else if (depth != 0 && two == "*)") {
                --depth;
                Pass(at, 2);
                after = depth == 0 ? at : after;
            } else if (depth != 0 && !two.empty()) {
                Pass(at, 1);
            } else {
                return after;
            }
        }
    }

    void Pass(TPosition &at, std::uint32_t count) const {
        const bool line_feed = text_[at.index] == '\n';
        at.index += count;
        at.line += line_feed ? 1 : 0;
        at.lineIndex = line_feed ? 1 : at.lineIndex + count;
    }

    std::string_view text_;
    CTapeReader tape_;
    TToken token_;
    TPosition begin_;                      ///< where reading the token began
    std::optional<TPosition> unfinished_;  ///< where the line's key begins, as long as no `=` follows
    bool has_value_ = false;               ///< the line has a `=`
    std::vector<TUnreadText> found_;
    bool ended_ = false;
    bool failed_ = false;
    bool in_section_ = false;
    bool keys_ended_ = false;
};

}  // namespace

std::vector<TUnreadText> FindUnreadText(std::string_view text) {
    constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max();
    return CUnreadTextSearch(text.substr(0, kLongest)).Run();
}

}  // namespace par_scanner
