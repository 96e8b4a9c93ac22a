#include "configurator/session.h"

#include "driver/channels/text_out.h"

namespace kq_pdt {

CConfiguratorSession::CConfiguratorSession() {
    sheet_data_.SetWindow(this);
    // Nobody edits these texts unless a window says so.
    par_view_.SetHistoryKept(false);
    dmf_view_.SetHistoryKept(false);
}

CConfiguratorSession::~CConfiguratorSession() { sheet_data_.SetWindow(nullptr); }

void CConfiguratorSession::SetTemplatePath(std::string_view path) {
    template_ = path;
    template_is_text_ = false;
}

void CConfiguratorSession::SetTemplateText(std::string_view text) {
    template_ = text;
    template_is_text_ = true;
}

bool CConfiguratorSession::LoadTemplate() {
    return template_is_text_ ? sheet_data_.LoadTemplateText(template_, template_result_)
                             : sheet_data_.LoadTemplate(template_, template_result_);
}

CConfiguratorSession::TOutcome CConfiguratorSession::ReadIntoModel() {
    if (!LoadTemplate()) {
        return TOutcome::kTemplateFailed;
    }
    sheet_data_.ReadPar(par_view_.Text());
    ParRead();
    return messages_.ErrorCount() == 0 ? TOutcome::kDone : TOutcome::kErrors;
}

void CConfiguratorSession::ClearModel() {
    messages_.ResetErrorCount();
    ClearSheet();
    sheet_data_.ClearData();
    sheet_data_.Ranges().Clear();
}

bool CConfiguratorSession::CompileTemplate() {
    ClearModel();
    sheet_data_.Ranges().LoadDmfText(dmf_view_);
    return LoadTemplate();
}

CConfiguratorSession::TOutcome CConfiguratorSession::TranslateToModel() {
    ClearModel();
    sheet_data_.Ranges().LoadDmfText(dmf_view_);
    return ReadIntoModel();
}

CConfiguratorSession::TOutcome CConfiguratorSession::RepairDmf() {
    ClearMessages();
    ClearModel();
    const TOutcome outcome = ReadIntoModel();
    if (outcome == TOutcome::kDone) {
        WriteDmf();
    }
    return outcome;
}

// What is written replaces the text in one piece, so that a person can take it back as one step and an equal text
// counts as none.

void CConfiguratorSession::WriteParTo(CTextView &view) {
    view.SetHistoryKept(false);
    CTextOut out(&view);
    sheet_data_.WriteParText(out);
}

void CConfiguratorSession::WritePar() {
    CTextView written;
    WriteParTo(written);
    par_view_.SetText(written.Text());
}

void CConfiguratorSession::WriteDmfTo(CTextView &view) {
    view.SetHistoryKept(false);
    CTextOut out(&view);
    sheet_data_.Ranges().WriteDmfText(out);
}

void CConfiguratorSession::WriteDmf() {
    CTextView written;
    WriteDmfTo(written);
    dmf_view_.SetText(written.Text());
}

void CConfiguratorSession::AddWarning(std::string_view text1, std::string_view text2, std::uint32_t line) {
    messages_.Append(CMessageList::TIcon::kNotice, text1, text2, line, 0);
}

void CConfiguratorSession::AddError(std::string_view text1, std::string_view text2, std::uint32_t line) {
    messages_.Append(CMessageList::TIcon::kError, text1, text2, line, 0);
}

void CConfiguratorSession::AddErrorAt(std::string_view text1, std::string_view text2, std::uint32_t line,
                                      std::uint32_t column) {
    messages_.Append(CMessageList::TIcon::kError, text1, text2, line, column);
}

void CConfiguratorSession::AddMessageRecord(std::uint32_t line, std::uint32_t column) {
    messages_.AppendRecord(line, column);
}

void CConfiguratorSession::ClearMessages() { messages_.Clear(); }

}  // namespace kq_pdt
