#include <algorithm>
#include <optional>

#include "tools/commands.h"
#include "tools/commands/translation.h"
#include "tools/console/diagnostics.h"
#include "tools/console/files.h"
#include "tools/print/channel_table.h"
#include "tools/print/json_report.h"

using kq_cfg::TReport;

namespace {

/// Writes the resulting text into a file, as part of the JSON value, or as it is. Without a text only the JSON value is
/// written. False if the file can't be written.
bool WriteResult(const TArguments &arguments, TConsole &console, const TReport &report,
                 const std::optional<std::string> &text) {
    const bool into_file = arguments.output && *arguments.output != kStandardInput;
    if (text && into_file && !SaveText(console, *arguments.output, *text)) {
        return false;
    }
    if (arguments.json) {
        TJson json = ReportJson(report);
        json["text"] = TextOrNull(text);
        console.out.Write(Dumped(json));
    } else if (text && !into_file && !arguments.check) {
        console.out.Write(*text);
    }
    return true;
}

/// How a line would have to change to be as it is written.
std::string ChangeText(std::string_view line, std::string_view written, bool after_end) {
    if (after_end) {
        return "this line and what follows would go";
    }
    return line == written ? "this line would end with CR LF"
                           : "this line would be \"" + kq_base::ToUtf8(written) + "\"";
}

void PrintFirstDifference(TConsole &console, const CSourceText &par, const std::string &written) {
    const std::string &text = par.Text();
    const auto [in_text, in_written] = std::mismatch(text.begin(), text.end(), written.begin(), written.end());
    const auto line = static_cast<std::uint32_t>(1 + std::count(text.begin(), in_text, '\n'));
    const CSourceText lines("", written);
    PrintDiagnostic(console, par,
                    {.text = "the file isn't in the form that is written; " +
                             ChangeText(par.Line(line), lines.Line(line), in_written == written.end()),
                     .line = line});
}

/// A driver map file can't hold a channel whose type or direction is open.
void PrintLeftOut(TConsole &console, const CSourceText &par, const std::vector<kq_cfg::TChannel> &channels) {
    for (const kq_cfg::TChannel &channel : channels) {
        if (!channel.type || !channel.direction) {
            PrintDiagnostic(console, par,
                            {.kind = TDiagnosticKind::kNote,
                             .text = "left out, since type or direction is undefined: " + ChannelNumbers(channel)});
        }
    }
}

}  // namespace

int RunCheck(const TArguments &arguments, TConsole &console) {
    CTranslation translation;
    if (!translation.Read(arguments, console, true)) {
        return kFailed;
    }
    translation.Translate(arguments, console, false);
    console.out.Write(arguments.json
                          ? Dumped(ReportJson(translation.Report()))
                          : translation.Sources().par.Name() + ": " + VerdictText(translation.Report()) + "\n");
    return translation.ExitCode();
}

int RunFormat(const TArguments &arguments, TConsole &console) {
    CTranslation translation;
    if (!translation.Read(arguments, console, true)) {
        return kFailed;
    }
    translation.Translate(arguments, console, false);
    std::optional<std::string> text;
    if (translation.Report().Good()) {
        text = translation.Configuration().ParText();
    }
    if (!WriteResult(arguments, console, translation.Report(), text)) {
        return kFailed;
    }
    const CSourceText &par = translation.Sources().par;
    if (!arguments.check || !text || *text == par.Text()) {
        return translation.ExitCode();
    }
    if (!arguments.json) {
        PrintFirstDifference(console, par, *text);
    }
    return kInputErrors;
}

int RunChannels(const TArguments &arguments, TConsole &console) {
    CTranslation translation;
    if (!translation.Read(arguments, console, true)) {
        return kFailed;
    }
    translation.Translate(arguments, console, false);
    if (arguments.json) {
        TJson json = ReportJson(translation.Report());
        json["channels"] = ChannelsJson(translation.Configuration().Channels());
        console.out.Write(Dumped(json));
    } else {
        console.out.Write(ChannelTable(translation.Configuration().Channels()));
    }
    return translation.ExitCode();
}

int RunDmf(const TArguments &arguments, TConsole &console) {
    CTranslation translation;
    if (!translation.Read(arguments, console, false)) {
        return kFailed;
    }
    translation.Translate(arguments, console, true);
    std::optional<std::string> text;
    if (translation.Report().Good()) {
        text = translation.Configuration().DmfText();
        if (!arguments.json) {
            PrintLeftOut(console, translation.Sources().par, translation.Configuration().Channels());
        }
    }
    return WriteResult(arguments, console, translation.Report(), text) ? translation.ExitCode() : kFailed;
}
