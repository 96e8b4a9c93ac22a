#include "scanner/par_scanner.h"

#include <cstring>
#include <new>

#include "platform/base/bounded_text.h"
#include "scanner/byte_block.h"
#include "scanner/key_loader.h"
#include "scanner/line_scan.h"
#include "scanner/plain_text.h"
#include "scanner/scanned_text.h"
#include "scanner/section_scan.h"
#include "scanner/text_cutter.h"

// Every text has two ways out of the tape. In general it is cut token by token (scanner/text_cutter.h), which is what
// the result always is. In a regular line, and those are nearly all, the same result is found by looking for blanks,
// commas, strings and the line end only. Both ways leave the tape at the same position, so they may alternate from call
// to call.

namespace par_scanner {

using detail::KindSet;

namespace {

/// Into a buffer that holds 256 characters. The text is one of ours and so has a margin that may be read.
void CopyOut(std::string_view text, char *target) {
    if (target == nullptr) {
        return;
    }
    if (text.size() <= detail::CByteBlock::kSize && !text.empty()) {
        detail::CByteBlock(text.data()).Store(target);
    } else if (!text.empty()) {
        std::memcpy(target, text.data(), text.size());
    }
    target[text.size()] = '\0';
}

void CopyName(std::string_view name, std::uint32_t high, char *target) {
    if (high >= kq_base::TText::kBound) {
        CopyOut(name, target);
    } else {
        kq_base::CopyToBuffer(name, high, target);
    }
}

}  // namespace

[[gnu::always_inline]] inline std::string_view CParScanner::CutValue() {
    const TPosition begin = tape_.GetPosition();
    detail::TPlainValue value;
    if (!in_regular_line_ || tape_.CarriesOver() || !text_->values.Cut(text_->text.get(), begin.index, value)) {
        return CutValueByTokens();
    }
    separator_ = value.separator;
    last_value_ = value.separator == kLineEnd;
    if (last_value_) {
        tape_.SetPosition({value.next, begin.line + 1, 1});
    } else {
        tape_.SetPosition({value.next, begin.line, begin.lineIndex + (value.next - begin.index)});
    }
    return {text_->text.get() + value.first, value.length};
}

CParScanner::CParScanner() : text_(std::make_shared<TScannedText>()) {}

void CParScanner::Done() {
    text_ = std::make_shared<TScannedText>();
    section_ = nullptr;
    tape_.InitBuffer(nullptr, 0);
    in_regular_line_ = false;
}

std::uint32_t CParScanner::GetDataSize() { return 0; }

bool CParScanner::ReadBlockData(TStr0_ * /*buffer*/) { return false; }

bool CParScanner::Init(std::uint32_t source) {
    source_ = source;
    const std::uint32_t size = GetDataSize();
    const std::size_t room = std::size_t{size} + detail::kMargin;
    auto text = std::make_shared<TScannedText>();
    text->text.reset(room > size ? new (std::nothrow) char[room] : nullptr);
    if (text->text == nullptr || !ReadBlockData(text->text.get())) {
        return false;
    }
    text->size = size;
    std::memset(text->text.get() + size, '\n', detail::kMargin);
    text_ = std::move(text);
    tape_.InitBuffer(text_->text.get(), size);
    in_regular_line_ = false;
    detail::ScanSections(*text_, tape_);
    // The section that was found last is current; a caller begins with FirstSection anyway.
    const std::size_t count = text_->sections.Size();
    section_ = count != 0 ? &text_->sections[count - 1] : nullptr;
    return true;
}

bool CParScanner::GetFirstSection(std::uint32_t high, char *name) {
    const bool found = FirstSection();
    if (found) {
        CopyName(SectionName(), high, name);
    }
    return found;
}

bool CParScanner::GetNextSection(std::uint32_t high, char *name) {
    const bool found = NextSection();
    if (found) {
        CopyName(SectionName(), high, name);
    }
    return found;
}

bool CParScanner::FirstSection() {
    section_handle_ = 0;
    return Enter(0);
}

bool CParScanner::NextSection() {
    ++section_handle_;
    return Enter(section_ != nullptr ? section_->index + 1 : text_->sections.Size());
}

bool CParScanner::Enter(std::size_t index) {
    if (index >= text_->sections.Size()) {
        section_ = nullptr;
        section_handle_ = kNoSection;
        return false;
    }
    section_ = &text_->sections[index];
    LoadSectionData(section_);
    return true;
}

std::string_view CParScanner::SectionName() const {
    return section_ != nullptr ? std::string_view(text_->text.get() + section_->name, section_->name_length)
                               : std::string_view();
}

void CParScanner::LoadSectionData(CSection *section) {
    if (section != nullptr && !section->loaded) {
        in_regular_line_ = false;
        detail::LoadKeys(*text_, tape_, *section);
    }
}

void CParScanner::SetActSectionHandle(std::uint32_t handle) {
    if (handle == kNoSection) {
        return;
    }
    section_handle_ = handle;
    section_ = handle < text_->sections.Size() ? &text_->sections[handle] : nullptr;
    if (section_ != nullptr) {
        tape_.SetPosition(section_->position);
        in_regular_line_ = false;
    }
}

std::uint32_t CParScanner::GetSectionLine() const { return section_ != nullptr ? section_->line : 0; }

bool CParScanner::GetFirstKey(std::uint32_t high, char *name) {
    const bool found = FirstKey();
    if (found) {
        CopyName(KeyName(), high, name);
    }
    return found;
}

bool CParScanner::GetNextKey(std::uint32_t high, char *name) {
    const bool found = NextKey();
    if (found) {
        CopyName(KeyName(), high, name);
    }
    return found;
}

bool CParScanner::FirstKey() {
    if (section_ == nullptr || section_->KeyCount() == 0) {
        return false;
    }
    section_->current_key = 0;
    return true;
}

bool CParScanner::NextKey() {
    if (CurrentKey() == nullptr) {
        return false;
    }
    ++section_->current_key;
    return section_->current_key != section_->KeyCount();
}

std::string_view CParScanner::KeyName() const {
    const CKey *key = CurrentKey();
    return key != nullptr ? std::string_view(text_->text.get() + key->name, key->name_length) : std::string_view();
}

std::uint32_t CParScanner::GetKeyLine() const {
    const CKey *key = CurrentKey();
    return key != nullptr ? key->line : 0;
}

bool CParScanner::GetKeyPars(std::uint32_t /*high*/, char *text) {
    std::string_view pars;
    const bool found = KeyPars(pars);
    CopyOut(pars, text);
    return found;
}

bool CParScanner::KeyPars(std::string_view &text) {
    in_regular_line_ = false;
    text = {};
    const CKey *key = CurrentKey();
    if (key == nullptr || !GoPastEqual(*key)) {
        return false;
    }
    if (!IsRegular(*key)) {
        text = detail::CutText(tape_, text_->View(), KindSet(kLineEnd)).text;
        return true;
    }
    const detail::TPlainCut rest = detail::CutPlain<'\n'>(text_->text.get() + tape_.GetPosition().index);
    GoToNextLine(rest.stop);
    text = rest.text;
    return true;
}

bool CParScanner::GoPastEqual(const CKey &key) {
    if (!IsRegular(key)) {
        tape_.SetPosition(key.Position());
        return detail::FindKind(tape_, kEqual, kLineEnd);
    }
    if (key.equal == 0) {
        tape_.SetPosition(key.Position());
        GoToNextLine(text_->text.get() + key.name);
        return false;
    }
    const std::uint32_t index = key.name + key.equal + 1;
    tape_.SetPosition({index, key.line, index - key.index + 1});
    return true;
}

void CParScanner::GoToNextLine(const char *at) {
    tape_.SetPosition({text_->OffsetOf(detail::FindLineFeed(at)) + 1, tape_.GetLine() + 1, 1});
}

bool CParScanner::GetFirstPar(std::uint32_t /*high*/, char *value) {
    std::string_view text;
    const bool found = FirstValue(text);
    if (found) {
        CopyOut(text, value);
    }
    return found;
}

bool CParScanner::FirstValue(std::string_view &value) {
    in_regular_line_ = false;
    const CKey *key = CurrentKey();
    if (key == nullptr || !GoPastEqual(*key)) {
        return false;
    }
    in_regular_line_ = IsRegular(*key);
    value = CutValue();
    return true;
}

bool CParScanner::GetNextPar(std::uint32_t /*high*/, char *value, std::uint32_t &separator) {
    std::string_view text;
    const bool found = NextValue(text, separator);
    if (found) {
        CopyOut(text, value);
    }
    return found;
}

bool CParScanner::NextValue(std::string_view &value, std::uint32_t &separator) {
    if (last_value_) {
        return false;
    }
    separator = separator_;
    value = CutValue();
    return true;
}

std::string_view CParScanner::CutValueByTokens() {
    detail::SkipKinds(tape_, KindSet(kBlank));
    const detail::TCut value =
        detail::CutText(tape_, text_->View(), KindSet(kComma) | KindSet(kLineEnd) | KindSet(kBlank));
    separator_ = value.stop;
    last_value_ = value.stop == kLineEnd;
    if (value.stop == kBlank && (detail::SkipKinds(tape_, KindSet(kBlank) | KindSet(kComma)) & KindSet(kComma)) != 0) {
        separator_ = kComma;
    }
    return value.text;
}

bool CParScanner::ReadToken(std::uint32_t &error, TToken &token, bool peek) {
    in_regular_line_ = false;
    return tape_.ReadToken(error, token, peek);
}

bool CParScanner::TapeFind(std::uint32_t kind1, std::uint32_t kind2) {
    in_regular_line_ = false;
    return detail::FindKind(tape_, kind1, kind2);
}

bool CParScanner::AppendStrUntilToken(std::uint32_t /*high*/, char *text, std::uint32_t stop1, std::uint32_t stop2,
                                      std::uint32_t good, bool &end) {
    in_regular_line_ = false;
    const detail::TCut cut = detail::CutText(tape_, text_->View(), KindSet(stop1) | KindSet(stop2));
    CopyOut(cut.text, text);
    end = cut.end;
    return !cut.end && cut.stop == good;
}

std::uint32_t CParScanner::AppendStrUntilTokenEx(std::uint32_t /*high*/, char *text, std::uint64_t stops, bool &end) {
    in_regular_line_ = false;
    const detail::TCut cut = detail::CutText(tape_, text_->View(), stops);
    CopyOut(cut.text, text);
    end = cut.end;
    return cut.stop;
}

void Init_() {}

}  // namespace par_scanner
