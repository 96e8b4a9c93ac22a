#include "scanner/section_scan.h"

#include "scanner/byte_block.h"
#include "scanner/nesting.h"
#include "scanner/odd_line_search.h"
#include "scanner/plain_text.h"
#include "scanner/text_cutter.h"

// The one pass over the whole text. Only a `[` at the beginning of a line makes a header, and only strings, comments
// and malformed numbers change what the bytes after them are. Most lines have none of it or are closed in themselves,
// so the pass looks for headers and for the others, which it reads token by token; what lies between is only counted.

namespace par_scanner::detail {

namespace {

/// The line of a header.
struct THeader {
    const char *bracket = nullptr;    ///< the first `]`, or null
    const char *line_feed = nullptr;  ///< the line's end, or the text's
    bool equal = false;               ///< it has a `=`
    bool plain = true;                ///< no string, comment or second `[`, and nothing that makes the line odd
};

/// Measures the line from the byte after its `[` on.
THeader MeasureHeader(const char *begin) {
    THeader header;
    for (const char *at = begin; header.line_feed == nullptr; at += CByteBlock::kSize) {
        const CByteBlock block(at);
        const CByteBlock next(at + 1);
        const std::uint32_t ends = block.Equal('\n').Mask();
        const std::uint32_t in_line = (UpToLowest(ends) >> 1U) & CByteBlock::kAll;
        const CByteFlags others = MayBeOdd(block, next) | BeginComments(block, next) | block.Equal('\'');
        const std::uint32_t brackets = block.Equal(']').Mask() & in_line;
        header.bracket = header.bracket == nullptr && brackets != 0 ? at + LowestBit(brackets) : header.bracket;
        header.equal = header.equal || (block.Equal('=').Mask() & in_line) != 0;
        header.plain = header.plain && (others.Mask() & in_line) == 0;
        header.line_feed = ends != 0 ? at + LowestBit(ends) : nullptr;
    }
    return header;
}

class CSectionScan {
public:
    CSectionScan(TScannedText &text, CTapeReader &tape)
        : text_(text), tape_(tape), search_(text.text.get(), text.End()) {}

    void Run() {
        bool more = true;
        while (more) {
            const bool regular = !tape_.CarriesOver() && tape_.GetLineIndex() == 1;
            if (regular) {
                SkipRegularLines();
            }
            text_.odd_lines.push_back(tape_.GetPosition().index);
            more = (regular && ReadPlainHeader()) || ReadLine();
        }
    }

private:
    /// From the start of a line to the start of the next line that needs reading, or to the end of the text.
    void SkipRegularLines() {
        const char *begin = text_.text.get() + tape_.GetPosition().index;
        const char *line = search_.Find(begin);
        tape_.SetPosition({text_.OffsetOf(line), tape_.GetLine() + search_.LineFeeds(), 1});
    }

    /// Nearly all headers are plain, and so is the rest of their lines. False if this one isn't.
    bool ReadPlainHeader() {
        const TPosition begin = tape_.GetPosition();
        const char *first = SkipBlanks(text_.text.get() + begin.index);
        if (first >= text_.End() || *first != '[') {
            return false;
        }
        const THeader header = MeasureHeader(first + 1);
        if (!header.plain || header.bracket == nullptr || header.line_feed >= text_.End()) {
            return false;
        }
        const char *name = SkipBlanks(first + 1);
        const char *name_end = header.bracket;
        while (name_end > name && name_end[-1] == ' ') {
            --name_end;
        }
        tape_.SetPosition({text_.OffsetOf(header.line_feed) + 1, begin.line + 1, 1});
        CSection &section = AddSection(PlainText(name, name_end), begin.line, true);
        section.position = tape_.GetPosition();
        section.plain = !header.equal;
        return true;
    }

    /// Reads a line from its start on; false if the scan ends in it.
    bool ReadLine() {
        bool at_line_start = true;
        TToken token;
        std::uint32_t error = 0;
        for (;;) {
            const std::uint32_t begin = tape_.GetPosition().index;
            if (!tape_.ReadToken(error, token, false)) {
                return false;
            }
            if (token.kind == kLineEnd) {
                return true;
            }
            if (token.kind == kLeftBracket && at_line_start) {
                return ReadHeader(begin);
            }
            at_line_start = at_line_start && token.kind == kBlank;
        }
    }

    /// Reads on after a `[`, the reading of which began at an offset. A comment that was skipped there begins the
    /// line's key text, and so the line doesn't end the keys of the section before.
    bool ReadHeader(std::uint32_t begin) {
        const bool ends_keys = begin < text_.size && text_.text[begin] == '[';
        const TCut name = CutText(tape_, text_.View(), KindSet(kRightBracket) | KindSet(kLineEnd));
        if (name.stop != kRightBracket) {
            keys_open_ = keys_open_ && !ends_keys;
            return !name.end;
        }
        CSection &section = AddSection(name.text, tape_.GetLine(), ends_keys);
        const bool line_ended = FindKind(tape_, kLineEnd, kNoToken);
        section.position = tape_.GetPosition();
        section.loaded = !line_ended;  // the text ends here: there are no keys to read
        return line_ended;
    }

    CSection &AddSection(std::string_view name, std::uint32_t line, bool ends_keys) {
        const std::size_t index = text_.sections.Size();
        CSection &section = text_.sections.Add();
        section.index = static_cast<std::uint32_t>(index);
        section.line = line;
        section.name = text_.OffsetOf(name.data());
        section.name_length = static_cast<std::uint8_t>(name.size());
        section.odd_line = static_cast<std::uint32_t>(text_.odd_lines.size());
        section.joined = keys_open_ && !ends_keys;
        keys_open_ = true;
        return section;
    }

    TScannedText &text_;
    CTapeReader &tape_;
    COddLineSearch search_;
    bool keys_open_ = false;  ///< the keys of the last section go on here
};

}  // namespace

void ScanSections(TScannedText &text, CTapeReader &tape) { CSectionScan(text, tape).Run(); }

}  // namespace par_scanner::detail
