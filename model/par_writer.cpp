// Writing: each section is measured first, then its values stand in columns. A separator hugs the value ahead of it and
// the padding comes behind the separator, so no line ends in blanks.

#include "driver/channels/text_out.h"
#include "model/key_def.h"
#include "model/section_def.h"

namespace kq_pdt {

void CSectionDef::WriteSection(CTextOut &out) {
    const CScopeGuard scope(this);
    CColumnWidths widths;
    for (const auto &key : keys_) {
        key->MeasureKey(widths);
    }
    if (names_) {
        kq_base::CTextBuffer text;
        names_->Items().AppendText(text);
        out.SectionLine(text.View());
    }
    for (const auto &key : keys_) {
        key->WriteKey(out, widths);
    }
    out.Newline();
}

void CKeyDef::MeasureKey(CColumnWidths &widths) {
    if (Has(nfUnrecognised)) {
        return;
    }
    const CScopeGuard scope(this);
    kq_base::CTextBuffer text;
    if (names_) {
        names_->Items().AppendText(text);
        widths.Raise(0, text.Length());
    }
    for (std::size_t place = 0; place < pars_.size(); ++place) {
        if (pars_[place]->AppendText(text)) {
            widths.Raise(place + 1, text.Length());
        }
    }
}

void CKeyDef::WriteKey(CTextOut &out, const CColumnWidths &widths) {
    const CScopeGuard scope(this);
    const bool aligned = !Has(nfUnrecognised);
    bool written = false;
    std::size_t pad = 0;  // blanks due ahead of the next value
    for (std::size_t place = 0; place < pars_.size(); ++place) {
        kq_base::CTextBuffer text;
        if (!pars_[place]->AppendText(text)) {
            continue;
        }
        kq_base::CTextBuffer head;
        if (written) {
            out.Insert(pars_[place]->Separator().View());
            head.PadTo(pad);
            out.Insert(head.View());
        } else if (names_) {
            names_->Items().AppendText(head);
            if (aligned) {
                head.PadTo(widths.Width(0) + 1);
            }
            out.KeyHead(head.View());
        }
        written = true;
        out.Insert(text.View());
        const std::size_t column = widths.Width(place + 1) + 1;
        pad = aligned && column > text.Length() ? column - text.Length() : 0;
    }
    if (written) {
        out.Newline();
        return;
    }
    kq_base::CTextBuffer name;
    if (pars_.empty() && names_ && names_->Items().AppendText(name)) {
        out.Insert(name.View());
        out.Newline();
    }
}

}  // namespace kq_pdt
