#include "driver/channels/text_out.h"

#include "platform/base/text_buffer.h"
#include "platform/view/text_view.h"

namespace {

constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

void CTextOut::WriteLine(std::string_view text) {
    kq_base::CTextBuffer line;
    line.Append(text);
    Insert(line.View());
    Newline();
}

void CTextOut::SectionLine(std::string_view text) {
    kq_base::CTextBuffer line;
    line.Append("[");
    line.Append(text);
    line.Append("]");
    Insert(line.View());
    Newline();
}

void CTextOut::KeyHead(std::string_view text) {
    kq_base::CTextBuffer head;
    head.Append("  ");
    head.Append(text);
    head.Append(" = ");
    Insert(head.View());
}

void CTextOut::Insert(std::string_view text) {
    if (view_ != nullptr) {
        view_->InsertText(text);
    }
}

void CTextOut::Newline() { Insert(kLineEnd); }
