#include "tools/print/report_text.h"

#include <algorithm>

#include "platform/base/code_page.h"
#include "scanner/unread_text.h"
#include "tools/console/diagnostics.h"

using kq_cfg::TMessage;
using kq_cfg::TMessageBox;
using kq_cfg::TReport;
using kq_cfg::TSeverity;

namespace {

void PrintTemplateError(TConsole &console, const CSourceText &pdt, const kq_cfg::TTemplateResult &result) {
    PrintDiagnostic(console, pdt,
                    {.text = result.message.empty() ? "the template can't be understood from here on"
                                                    : kq_base::ToUtf8(result.message),
                     .line = result.line,
                     .column = result.position,
                     .meaning = TColumn::kAfterToken});
}

void PrintMessage(TConsole &console, const CSourceText &source, const TMessage &message) {
    PrintDiagnostic(
        console, source,
        {.kind = message.severity == TSeverity::kError ? TDiagnosticKind::kError : TDiagnosticKind::kWarning,
         .text = kq_base::ToUtf8(message.text),
         .line = message.line,
         .column = message.column,
         .meaning = TColumn::kAfterValue});
}

void PrintBox(TConsole &console, const CSourceText &source, const TMessageBox &box) {
    std::string text = box.title + ":";
    for (const std::string &line : box.lines) {
        text += line.empty() ? "" : " " + line;
    }
    PrintDiagnostic(
        console, source,
        {.kind = box.stop ? TDiagnosticKind::kError : TDiagnosticKind::kWarning, .text = kq_base::ToUtf8(text)});
}

std::string_view UnreadText(par_scanner::TUnreadReason reason) {
    switch (reason) {
        case par_scanner::TUnreadReason::kBeforeFirstHeader:
            return "text before the first section isn't read";
        case par_scanner::TUnreadReason::kFromMalformedHeaderOn:
            return "this is no section header; nothing from here to the next one is read";
        case par_scanner::TUnreadReason::kUnfinishedLine:
            return "the last line is a key without a value; it is read only if a line end follows";
        case par_scanner::TUnreadReason::kFromReadFailureOn:
            break;
    }
    return "an open string or comment, or a malformed number: nothing from here on is read";
}

bool ParGiven(const TSources &sources) { return !sources.par.Name().empty(); }

std::string Counted(std::uint32_t count, const std::string &noun) {
    return (count == 0 ? "no" : std::to_string(count)) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

void PrintReport(TConsole &console, const TSources &sources, const TReport &report) {
    if (!report.result.ok) {
        PrintTemplateError(console, sources.pdt, report.result);
    }
    PrintMessages(console, sources, report.messages, report.boxes);
    if (report.dmf_end) {
        PrintDiagnostic(console, sources.dmf,
                        {.kind = TDiagnosticKind::kNote,
                         .text = "the table of channels takes no more from here on; the channels that follow are kept "
                                 "aside and written back",
                         .line = report.dmf_end});
    }
    if (ParGiven(sources) && report.result.ok) {
        PrintUnreadText(console, sources.par);
    }
}

void PrintMessages(TConsole &console, const TSources &sources, const std::vector<TMessage> &messages,
                   const std::vector<TMessageBox> &boxes) {
    for (const TMessage &message : messages) {
        PrintMessage(console, ParGiven(sources) ? sources.par : sources.pdt, message);
    }
    for (const TMessageBox &box : boxes) {
        PrintBox(console, sources.pdt, box);
    }
}

void PrintUnreadText(TConsole &console, const CSourceText &par) {
    for (const par_scanner::TUnreadText &unread : par_scanner::FindUnreadText(par.Text())) {
        PrintDiagnostic(console, par,
                        {.kind = TDiagnosticKind::kNote,
                         .text = std::string(UnreadText(unread.reason)),
                         .line = unread.line,
                         .column = unread.column});
    }
}

std::string VerdictText(const TReport &report) {
    if (!report.result.ok) {
        return "not read, since the template has an error";
    }
    const auto stops =
        std::count_if(report.boxes.begin(), report.boxes.end(), [](const auto &box) { return box.stop; });
    std::string text = Counted(report.errors + static_cast<std::uint32_t>(stops), "error");
    if (report.warnings > 0) {
        text += ", " + Counted(report.warnings, "warning");
    }
    return text;
}
