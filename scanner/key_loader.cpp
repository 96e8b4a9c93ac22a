// Reads key lines. A plain line that ends with a line feed is measured in blocks; any other is cut token by token.
//
// A header with a comment ahead of it ends the keys of no section: the lines behind it belong to both. Were each
// section read by itself, a text of such headers would cost its length squared; so sections that are joined in this
// way are read in one go and share the list.

#include <limits>

#include "scanner/line_scan.h"
#include "scanner/scanned_text.h"
#include "scanner/text_cutter.h"

namespace par_scanner::detail {

namespace {

class CKeyLoader {
public:
    CKeyLoader(TScannedText &text, CTapeReader &tape, std::size_t first_section)
        : text_(text), tape_(tape), section_(first_section), keys_(text.keys_read) {}

    void Run() {
        const std::size_t first = section_;
        keys_.clear();
        list_ = std::make_shared<TKeyList>();
        tape_.SetPosition(text_.sections[first].position);
        bool more = true;
        while (more) {
            EnterSection();
            const char *begin = text_.text.get() + tape_.GetPosition().index;
            const TLine line = MeasureLine(begin);
            const bool fast = line.plain && line.line_feed < text_.End() && !tape_.CarriesOver();
            more = fast ? ReadPlainLine(begin, line) : ReadLine();
        }
        list_->keys.assign(keys_.begin(), keys_.end());
        list_->end = tape_.GetPosition();
        for (std::size_t at = first; at != section_; ++at) {
            CSection &section = text_.sections[at];
            section.list = list_;
            section.current_key = section.first_key < keys_.size() ? section.KeysEnd() - 1 : CSection::kNone;
        }
        if (keys_.size() > kKeptRoom) {
            keys_ = {};
        }
    }

private:
    static constexpr std::size_t kKeptRoom = 4096;  ///< keys

    /// At the start of a line: notes if a section begins here.
    void EnterSection() {
        if (section_ < text_.sections.size() && text_.sections[section_].position.index == tape_.GetPosition().index) {
            text_.sections[section_++].first_key = static_cast<std::uint32_t>(keys_.size());
        }
    }

    /// False if the keys end in this line.
    bool ReadPlainLine(const char *begin, const TLine &line) {
        const char *stop = line.equal != nullptr ? line.equal : line.line_feed;
        const TPosition place = tape_.GetPosition();
        if (*line.first == '[') {
            SetBehind(place, line.equal != nullptr ? line.equal - begin : line.line_feed - begin,
                      line.equal == nullptr);
            return false;
        }
        const char *last = stop;
        if (line.equal == nullptr && last != begin && last[-1] == '\r') {
            --last;
        }
        while (last > line.first && last[-1] == ' ') {
            --last;
        }
        if (last > line.first) {
            CKey key = MakeKey(place, BoundText(line.first, last));
            const std::ptrdiff_t equal = line.equal != nullptr ? line.equal - line.first : 0;
            key.plain = equal <= std::numeric_limits<std::uint16_t>::max();
            key.equal = static_cast<std::uint16_t>(equal);
            keys_.push_back(key);
        }
        SetBehind(place, line.line_feed - begin, true);
        return true;
    }

    void SetBehind(const TPosition &place, std::ptrdiff_t distance, bool line_end) {
        const std::uint32_t moved = static_cast<std::uint32_t>(distance) + 1;
        tape_.SetPosition({place.index + moved, place.line + (line_end ? 1 : 0), line_end ? 1 : moved + 1});
    }

    bool ReadLine() {
        const TPosition place = tape_.GetPosition();
        const TCut key = CutText(tape_, text_.View(), KindSet(kEqual) | KindSet(kLineEnd));
        if (key.end || key.text.starts_with('[')) {
            return false;
        }
        if (!key.text.empty()) {
            keys_.push_back(MakeKey(place, key.text));
        }
        return key.stop != kEqual || FindKind(tape_, kLineEnd, kNoToken);
    }

    CKey MakeKey(const TPosition &place, std::string_view name) const {
        CKey key;
        key.index = place.index;
        key.line = place.line;
        key.name = text_.OffsetOf(name.data());
        key.name_length = static_cast<std::uint8_t>(name.size());
        return key;
    }

    TScannedText &text_;
    CTapeReader &tape_;
    std::size_t section_;  ///< the next one to begin
    std::vector<CKey> &keys_;
    std::shared_ptr<TKeyList> list_;
};

}  // namespace

void LoadKeys(TScannedText &text, CTapeReader &tape, CSection &section) {
    const std::size_t asked = static_cast<std::size_t>(&section - text.sections.data());
    std::size_t first = asked;
    while (text.sections[first].joined && text.sections[first].list == nullptr) {
        --first;
    }
    if (text.sections[first].list == nullptr) {
        CKeyLoader(text, tape, first).Run();
    }
    if (section.list == nullptr) {  // only a tape at which no reading succeeds any more ends ahead of it
        CKeyLoader(text, tape, asked).Run();
    }
    tape.SetPosition(section.list->end);
}

}  // namespace par_scanner::detail
