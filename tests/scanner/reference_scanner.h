#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "tests/scanner/reference_reader.h"

/// The rules of the parameter file scanner once more, token by token and as plainly as they can be put, to compare the
/// fast scanner with. The operations are those of CParScanner.
class CReferenceScanner {
public:
    explicit CReferenceScanner(std::string_view text) : text_(text), tape_(text, false) { ScanSections(); }

    bool FirstSection() {
        handle_ = 0;
        return Enter(sections_.empty() ? -1 : 0);
    }
    bool NextSection() {
        ++handle_;
        const bool more = section_ >= 0 && section_ + 1 < static_cast<int>(sections_.size());
        return Enter(more ? section_ + 1 : -1);
    }
    std::string_view SectionName() const { return section_ >= 0 ? Section().name : std::string_view(); }
    std::uint32_t GetSectionLine() const { return section_ >= 0 ? Section().line : 0; }
    std::uint32_t GetActSectionHandle() const { return handle_; }
    void SetActSectionHandle(std::uint32_t handle) {
        if (handle == kNone) {
            return;
        }
        handle_ = handle;
        section_ = handle < sections_.size() ? static_cast<int>(handle) : -1;
        if (section_ >= 0) {
            tape_.position = Section().position;
        }
    }

    bool FirstKey() {
        if (section_ < 0 || Section().keys.empty()) {
            return false;
        }
        sections_[static_cast<std::size_t>(section_)].key = 0;
        return true;
    }
    bool NextKey() {
        if (section_ < 0 || Section().key < 0) {
            return false;
        }
        TSection &section = sections_[static_cast<std::size_t>(section_)];
        section.key = section.key + 1 < static_cast<int>(section.keys.size()) ? section.key + 1 : -1;
        return section.key >= 0;
    }
    std::string_view KeyName() const { return Key() != nullptr ? Key()->name : std::string_view(); }
    std::uint32_t GetKeyLine() const { return Key() != nullptr ? Key()->line : 0; }

    bool KeyPars(std::string_view &text) {
        text = {};
        if (!GoAfterEqual()) {
            return false;
        }
        bool end = false;
        Cut(text, {par_scanner::kLineEnd}, end);
        return true;
    }
    bool FirstValue(std::string_view &value) {
        if (!GoAfterEqual()) {
            return false;
        }
        ReadValue(value);
        return true;
    }
    bool NextValue(std::string_view &value, std::uint32_t &separator) {
        if (last_value_) {
            return false;
        }
        separator = separator_;
        ReadValue(value);
        return true;
    }

    std::uint32_t GetActPos() const { return tape_.position.lineIndex; }
    bool TapeFind(std::uint32_t kind1, std::uint32_t kind2) {
        std::uint32_t error = 0;
        while (tape_.Read(error)) {
            if (tape_.kind == kind1 || tape_.kind == kind2) {
                return tape_.kind == kind1;
            }
        }
        return false;
    }

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    struct TKey {
        std::string_view name;
        std::uint32_t line;
        par_scanner::TPosition position;
    };
    struct TSection {
        std::string_view name;
        std::uint32_t line;
        par_scanner::TPosition position;
        bool loaded;
        std::vector<TKey> keys;
        int key = -1;
    };

    const TSection &Section() const { return sections_[static_cast<std::size_t>(section_)]; }
    const TKey *Key() const {
        return section_ >= 0 && Section().key >= 0 ? &Section().keys[static_cast<std::size_t>(Section().key)] : nullptr;
    }

    void ScanSections() {
        bool at_line_start = true;
        std::uint32_t error = 0;
        while (tape_.Read(error)) {
            if (tape_.kind == par_scanner::kLineEnd) {
                at_line_start = true;
            } else if (tape_.kind == par_scanner::kLeftBracket && at_line_start) {
                std::string_view name;
                bool end = false;
                if (Cut(name, {par_scanner::kRightBracket, par_scanner::kLineEnd}, end) == par_scanner::kRightBracket) {
                    const std::uint32_t line = tape_.position.line;
                    const bool more = TapeFind(par_scanner::kLineEnd, 0);
                    sections_.push_back({name, line, tape_.position, !more, {}, -1});
                    end = !more;
                }
                if (end) {
                    break;
                }
            } else if (tape_.kind != par_scanner::kBlank) {
                at_line_start = false;
            }
        }
        section_ = static_cast<int>(sections_.size()) - 1;
    }

    bool Enter(int section) {
        section_ = section;
        if (section < 0) {
            handle_ = kNone;
            return false;
        }
        Load(sections_[static_cast<std::size_t>(section)]);
        return true;
    }

    void Load(TSection &section) {
        if (section.loaded) {
            return;
        }
        section.loaded = true;
        tape_.position = section.position;
        for (bool more = true; more;) {
            TKey key{{}, tape_.position.line, tape_.position};
            bool end = false;
            const std::uint32_t stop = Cut(key.name, {par_scanner::kEqual, par_scanner::kLineEnd}, end);
            if (end || key.name.starts_with('[')) {
                return;
            }
            if (!key.name.empty()) {
                section.keys.push_back(key);
                section.key = static_cast<int>(section.keys.size()) - 1;
            }
            more = stop != par_scanner::kEqual || TapeFind(par_scanner::kLineEnd, 0);
        }
    }

    bool GoAfterEqual() {
        if (Key() == nullptr) {
            return false;
        }
        tape_.position = Key()->position;
        return TapeFind(par_scanner::kEqual, par_scanner::kLineEnd);
    }

    static bool Holds(const std::vector<std::uint32_t> &kinds, std::uint32_t kind) {
        return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
    }

    std::uint32_t Cut(std::string_view &text, const std::vector<std::uint32_t> &stops, bool &end) {
        std::size_t first = tape_.position.index;
        std::size_t last = first;
        bool started = false;
        std::uint32_t error = 0;
        for (;;) {
            end = !tape_.Read(error);
            if (end || Holds(stops, tape_.kind)) {
                break;
            }
            const std::size_t index = tape_.position.index;
            const bool blank = tape_.kind == par_scanner::kBlank;
            if (tape_.kind == par_scanner::kIdentifier && tape_.text == "\r" && text_.substr(index, 1) == "\n") {
                continue;
            }
            last = blank ? last : index;
            first = !started && blank ? index : first;
            started = started || !blank;
        }
        if (last > first + 255) {
            last = first + 254;
        }
        text = last > first ? text_.substr(first, last - first) : text_.substr(first, 0);
        text = text.substr(0, text.find_first_of(std::string_view("\r\0", 2)));
        return end ? std::uint32_t{par_scanner::kLineEnd} : tape_.kind;
    }

    bool Skip(const std::vector<std::uint32_t> &kinds, std::uint32_t looked_for) {
        bool seen = false;
        std::uint32_t error = 0;
        for (;;) {
            const par_scanner::TPosition before = tape_.position;
            if (!tape_.Read(error) || !Holds(kinds, tape_.kind)) {
                tape_.position = before;
                return seen;
            }
            seen = seen || tape_.kind == looked_for;
        }
    }

    void ReadValue(std::string_view &value) {
        using namespace par_scanner;
        Skip({kBlank}, kBlank);
        bool end = false;
        separator_ = Cut(value, {kComma, kLineEnd, kBlank}, end);
        last_value_ = separator_ == kLineEnd;
        if (separator_ == kBlank && Skip({kBlank, kComma}, kComma)) {
            separator_ = kComma;
        }
    }

    std::string_view text_;
    CReferenceReader tape_;
    std::vector<TSection> sections_;
    int section_ = -1;
    std::uint32_t handle_ = kNone;
    bool last_value_ = false;
    std::uint32_t separator_ = 0;
};
