#include "scanner/key_loader.h"

#include <algorithm>
#include <limits>

#include "scanner/line_scan.h"
#include "scanner/plain_text.h"
#include "scanner/text_cutter.h"

// Reads key lines. Regular lines are measured in blocks, odd ones cut token by token.
//
// A header after a comment ends the keys of no section: the lines that follow it belong to both. Were each
// section read by itself, a text of such headers would cost its length squared; so sections that are joined in this
// way are read in one go and share their keys.

namespace par_scanner::detail {

namespace {

bool GoesWithEqual(char character) { return character == ':' || character == '<' || character == '>'; }

class CKeyLoader {
public:
    CKeyLoader(TScannedText &text, CTapeReader &tape, std::size_t first_section)
        : text_(text), tape_(tape), section_(first_section), keys_(text.room), lines_(text.text.get()) {
        const CSection &first = text.sections[first_section];
        position_ = first.position;
        next_section_ = position_.index;
        odd_ = text.odd_lines.begin() + first.odd_line;
        next_odd_ = odd_ != text.odd_lines.end() ? *odd_ : kNever;
    }

    void Run() {
        const std::size_t first = section_;
        keys_.clear();
        bool more = true;
        while (more) {
            EnterSection();
            more = IsOdd() ? ReadOddLine() : ReadRegularLine();
        }
        const CKey *kept = text_.keys.Keep(keys_);
        for (std::size_t at = first; at != section_; ++at) {
            CSection &section = text_.sections[at];
            if (section.read) {
                continue;
            }
            section.keys = kept + section.keys_read;
            section.keys_read = static_cast<std::uint32_t>(keys_.size()) - section.keys_read;
            section.end = position_;
            section.read = true;
        }
        if (keys_.size() > kKeptRoom) {
            keys_ = {};
        }
    }

private:
    static constexpr std::size_t kKeptRoom = 4096;              ///< keys
    static constexpr std::uint64_t kNever = ~std::uint64_t{0};  ///< no offset

    const char *Begin() const { return text_.text.get() + position_.index; }

    /// At the start of a line: notes if a section begins here, and how many keys of the list precede its own.
    void EnterSection() {
        if (position_.index == next_section_) {
            CSection &section = text_.sections[section_++];
            section.keys_read = section.read ? section.keys_read : static_cast<std::uint32_t>(keys_.size());
            next_section_ = section_ < text_.sections.Size() ? text_.sections[section_].position.index : kNever;
        }
    }

    bool IsOdd() {
        while (next_odd_ < position_.index) {
            ++odd_;
            next_odd_ = odd_ != text_.odd_lines.end() ? *odd_ : kNever;
        }
        return next_odd_ == position_.index || tape_.CarriesOver();
    }

    // Each way of reading a line gives false if the keys end in it, and moves the position past what it has read.

    bool ReadRegularLine() {
        const char *begin = Begin();
        const TLine line = lines_.Measure(begin);
        if (line.equal != nullptr && line.equal != begin && GoesWithEqual(line.equal[-1])) {
            return ReadTokens();
        }
        if (line.name_end != line.name) {
            CKey &key = AddKey(PlainText(line.name, line.name_end));
            const std::ptrdiff_t equal = line.equal != nullptr ? line.equal - line.name : 0;
            if (equal <= std::numeric_limits<std::uint16_t>::max()) {
                key.regular = true;
                key.equal = static_cast<std::uint16_t>(equal);
            }
        }
        position_ = {text_.OffsetOf(line.line_feed) + 1, position_.line + 1, 1};
        return true;
    }

    /// Most odd lines are the header of the next section.
    bool ReadOddLine() {
        if (section_ == text_.sections.Size() || tape_.CarriesOver()) {
            return ReadTokens();
        }
        const CSection &next = text_.sections[section_];
        const auto line = static_cast<std::uint32_t>(odd_ - text_.odd_lines.begin());
        if (!next.plain || next.odd_line != line + 1) {
            return ReadTokens();
        }
        position_ = next.position;
        return false;
    }

    bool ReadTokens() {
        tape_.SetPosition(position_);
        const TCut cut = CutText(tape_, text_.View(), KindSet(kEqual) | KindSet(kLineEnd));
        bool more = !cut.end && !cut.text.starts_with('[');
        if (more && !cut.text.empty()) {
            AddKey(cut.text);
        }
        if (more && cut.stop == kEqual) {
            more = FindKind(tape_, kLineEnd, kNoToken);
        }
        position_ = tape_.GetPosition();
        return more;
    }

    CKey &AddKey(std::string_view name) {
        CKey &key = keys_.emplace_back();
        key.index = position_.index;
        key.line = position_.line;
        key.name = text_.OffsetOf(name.data());
        key.name_length = static_cast<std::uint8_t>(name.size());
        return key;
    }

    TScannedText &text_;
    CTapeReader &tape_;
    std::size_t section_;  ///< the next one to begin
    std::vector<CKey> &keys_;
    CLineWindow lines_;
    TPosition position_;  ///< the start of the line
    std::vector<std::uint32_t>::const_iterator odd_;
    std::uint64_t next_odd_ = kNever;      ///< the next odd line, here or further on
    std::uint64_t next_section_ = kNever;  ///< where the next section begins
};

}  // namespace

void LoadKeys(TScannedText &text, CTapeReader &tape, CSection &section) {
    std::size_t first = section.index;
    while (text.sections[first].joined && !text.sections[first].read) {
        --first;
    }
    if (!text.sections[first].read) {
        CKeyLoader(text, tape, first).Run();
    }
    if (!section.read) {  // only a tape at which no reading succeeds any more ends before it
        CKeyLoader(text, tape, section.index).Run();
    }
    section.loaded = true;
    section.current_key = section.keys_read != 0 ? section.keys_read - 1 : 0;  // on the key that was read last
    tape.SetPosition(section.end);
}

}  // namespace par_scanner::detail
