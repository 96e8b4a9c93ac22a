#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "configurator/message_list.h"
#include "model/report_window.h"
#include "model/sheet_data.h"
#include "platform/view/text_view.h"

namespace kq_pdt {

/// One session with one driver, without a window: the model, the texts of parameter file and driver map file, the
/// messages, and the order of steps from text to model and back. A window derives from it and adds what a user sees.
class CConfiguratorSession : public CReportWindow {
public:
    enum class TOutcome {
        kTemplateFailed,  ///< the template doesn't compile; nothing was read
        kErrors,          ///< the parameter file has errors
        kDone,
    };

    CConfiguratorSession();
    ~CConfiguratorSession() override;

    /// The template, as the path of its file or as its text. It is compiled anew at each translation.
    void SetTemplatePath(std::string_view path);
    void SetTemplateText(std::string_view text);

    /// From text to model: the model and the table of channels are cleared, the driver map file's text is read into the
    /// table, the template compiled and the parameter file's text read. Messages of earlier work stay.
    TOutcome TranslateToModel();
    /// The driver map file's text becomes what template and parameter file define; after a failure it stays as it is.
    /// Messages of earlier work go first, and nothing of the old driver map file is read.
    TOutcome RepairDmf();
    /// The first half of a translation, without reading the parameter file. True if the template compiles.
    bool CompileTemplate();
    /// From model to the parameter file's text.
    void WritePar();
    /// From the table of channels to the driver map file's text.
    void WriteDmf();

    CTextView &ParView() { return par_view_; }
    CTextView &DmfView() { return dmf_view_; }
    CParSheetData &SheetData() { return sheet_data_; }
    const CMessageList &Messages() const { return messages_; }
    /// The result of the last compile of the template.
    const TCompileResult &TemplateResult() const { return template_result_; }

    void AddWarning(std::string_view text1, std::string_view text2, std::uint32_t line) override;
    void AddError(std::string_view text1, std::string_view text2, std::uint32_t line) override;
    void AddErrorAt(std::string_view text1, std::string_view text2, std::uint32_t line, std::uint32_t column) override;
    void AddMessageRecord(std::uint32_t line, std::uint32_t column) override;
    void ClearMessages() override;

protected:
    /// Takes away the messages after so many rows.
    void CutMessages(std::size_t rows) { messages_.CutTo(rows); }
    /// The model is about to lose what the sheet shows.
    virtual void ClearSheet() {}
    /// The parameter file's text was read into the model; its messages are all there.
    virtual void ParRead() {}

    /// Writes the model at the end of an empty view that nobody edits.
    void WriteParTo(CTextView &view);
    /// The same of the driver map file's text.
    void WriteDmfTo(CTextView &view);

private:
    bool LoadTemplate();
    void ClearModel();
    TOutcome ReadIntoModel();

    CParSheetData sheet_data_;
    CTextView par_view_;
    CTextView dmf_view_;
    CMessageList messages_;
    std::string template_;
    bool template_is_text_ = false;
    TCompileResult template_result_;
};

}  // namespace kq_pdt
