#include "scanner/section_scan.h"

#include <algorithm>

#include "scanner/line_scan.h"
#include "scanner/text_cutter.h"

// The one pass over the whole text. Most bytes can't matter to it: only a `[` at the beginning of a line makes a
// header, and only quotes, comments and malformed numbers change what the bytes after them are. So the pass looks for
// those and reads the lines that hold one token by token; what lies between is only counted.

namespace par_scanner::detail {

namespace {

class CSectionScan {
public:
    CSectionScan(TScannedText &text, CTapeReader &tape) : text_(text), tape_(tape) {}

    void Run() {
        bool more = true;
        while (more) {
            if (!tape_.CarriesOver() && tape_.GetLineIndex() == 1) {
                SkipPlainLines();
            }
            text_.odd_lines.push_back(tape_.GetPosition().index);
            more = ReadLine();
        }
    }

private:
    /// From the start of a line to the start of the next line that needs reading, or to the end of the text.
    void SkipPlainLines() {
        const char *begin = text_.text.get() + tape_.GetPosition().index;
        const char *at = begin;
        const char *line = nullptr;
        while (line == nullptr) {
            at = FindConspicuous(at, text_.End());
            line = at == text_.End() || *at != '[' ? StartOfLine(begin, at) : StartIfOnlyBlanks(begin, at);
            ++at;
        }
        tape_.SetPosition({text_.OffsetOf(line), tape_.GetLine() + CountLineFeeds(begin, line), 1});
    }

    static const char *StartOfLine(const char *begin, const char *at) {
        while (at != begin && at[-1] != '\n') {
            --at;
        }
        return at;
    }
    static const char *StartIfOnlyBlanks(const char *begin, const char *at) {
        while (at != begin && at[-1] == ' ') {
            --at;
        }
        return at == begin || at[-1] == '\n' ? at : nullptr;
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
        CSection section;
        section.line = tape_.GetLine();
        section.name = text_.OffsetOf(name.text.data());
        section.name_length = static_cast<std::uint8_t>(name.text.size());
        section.joined = keys_open_ && !ends_keys;
        const bool line_ended = FindKind(tape_, kLineEnd, kNoToken);
        section.position = tape_.GetPosition();
        section.loaded = !line_ended;  // the text ends here: there are no keys to read
        text_.sections.push_back(std::move(section));
        keys_open_ = true;
        return line_ended;
    }

    TScannedText &text_;
    CTapeReader &tape_;
    bool keys_open_ = false;  ///< the keys of the last section go on here
};

}  // namespace

void ScanSections(TScannedText &text, CTapeReader &tape) { CSectionScan(text, tape).Run(); }

}  // namespace par_scanner::detail
