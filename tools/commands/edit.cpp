#include <algorithm>
#include <filesystem>

#include "platform/base/code_page.h"
#include "tools/commands.h"
#include "tools/commands/read_back.h"
#include "tools/commands/translation.h"
#include "tools/console/diagnostics.h"
#include "tools/console/files.h"
#include "tools/console/joint_save.h"
#include "tools/console/text_argument.h"
#include "tools/print/json_report.h"

using kq_cfg::CConfiguration;
using kq_cfg::TEditOutcome;
using kq_cfg::TReport;

namespace {

/// One edit of the command line, in the library's code page.
struct TEdit {
    std::string place;
    std::string value;  ///< of set alone
};

using TEdits = std::vector<TEdit>;
using TCarryOut = TEditOutcome (*)(CConfiguration &configuration, const TEdit &edit);

/// The `=` that ends the place; a backslash makes the next character a part of the place.
std::size_t FindEqualSign(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && text[at] != '=') {
        at += text[at] == '\\' ? 2 : 1;
    }
    return at < text.size() ? at : std::string_view::npos;
}

bool ReadEdits(const TArguments &arguments, TConsole &console, bool with_value, TEdits &edits) {
    for (const std::string &typed : arguments.edits) {
        std::string text;
        if (!ToCodePage(console, typed, typed, text)) {
            return false;
        }
        const std::size_t equal = with_value ? FindEqualSign(text) : text.size();
        if (equal == std::string_view::npos) {
            PrintError(console, typed, "this should be PLACE=VALUE");
            return false;
        }
        edits.push_back({text.substr(0, equal), with_value ? text.substr(equal + 1) : std::string()});
    }
    return true;
}

bool IsFile(const std::optional<std::string> &name) { return name && *name != kStandardInput; }

std::filesystem::path WholePath(const std::string &name) {
    std::error_code ignored;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(name, ignored), ignored);
}

/// True unless both texts would go to one file.
bool CheckOutputs(const TArguments &arguments, TConsole &console) {
    bool same = !arguments.json && arguments.dmf_output && !IsFile(arguments.dmf_output) && !IsFile(arguments.output);
    if (IsFile(arguments.output) && IsFile(arguments.dmf_output)) {
        same = WholePath(*arguments.output) == WholePath(*arguments.dmf_output);
    }
    if (same) {
        PrintError(console, "--dmf-out", "parameter file and driver map file can't go to the same file");
    }
    return !same;
}

/// The edits of one call on a configuration that was read.
class CEditing {
public:
    CEditing(const TArguments &arguments, TConsole &console, CTranslation &translation)
        : arguments_(arguments), console_(console), translation_(translation) {}

    /// Carries all edits out, in order, and prints for people which are refused. After a refused one the next ones are
    /// judged too, so that one call shows all mistakes.
    void CarryOut(const TEdits &edits, TCarryOut carry_out) {
        for (const TEdit &edit : edits) {
            const std::size_t messages = translation_.Report().messages.size();
            const std::size_t boxes = translation_.Report().boxes.size();
            const TEditOutcome outcome = carry_out(translation_.Configuration(), edit);
            good_ = good_ && outcome.ok;
            json_.push_back(
                {{"place", TextJson(edit.place)}, {"ok", outcome.ok}, {"message", TextJson(outcome.message)}});
            if (!arguments_.json) {
                PrintNewMessages(messages, boxes, outcome);
                PrintOutcome(edit, outcome);
            }
        }
        good_ = good_ && translation_.Report().Good();
    }

    /// Writes both files if all went well, and gives the exit code.
    int HandOut() {
        if (good_) {
            par_ = translation_.Configuration().ParText();
            dmf_ = translation_.Configuration().DmfText();
        }
        CJointSave files(console_);
        if (good_ && IsFile(arguments_.dmf_output)) {
            files.Add(*arguments_.dmf_output, *dmf_);
        }
        if (good_ && IsFile(arguments_.output)) {
            files.Add(*arguments_.output, *par_);
        }
        if (!files.Save()) {
            return kFailed;
        }
        console_.out.Write(Output());
        std::string reason;
        if (!console_.out.Finish(reason)) {
            files.TakeBack();
            return kFailed;
        }
        if (good_ && !arguments_.json) {
            PrintNotes();
        }
        return good_ ? kDone : kInputErrors;
    }

private:
    /// Prints the new messages and boxes, but not what the outcome repeats.
    void PrintNewMessages(std::size_t messages, std::size_t boxes, const TEditOutcome &outcome) {
        const TReport &report = translation_.Report();
        std::vector<kq_cfg::TMessage> new_messages;
        std::copy_if(report.messages.begin() + static_cast<std::ptrdiff_t>(messages), report.messages.end(),
                     std::back_inserter(new_messages),
                     [&](const kq_cfg::TMessage &message) { return message.text != outcome.message; });
        std::vector<kq_cfg::TMessageBox> new_boxes;
        std::copy_if(report.boxes.begin() + static_cast<std::ptrdiff_t>(boxes), report.boxes.end(),
                     std::back_inserter(new_boxes),
                     [&](const kq_cfg::TMessageBox &box) { return box.lines.front() != outcome.message; });
        PrintMessages(console_, translation_.Sources(), new_messages, new_boxes);
    }

    void PrintOutcome(const TEdit &edit, const TEditOutcome &outcome) {
        const std::string place = kq_base::ToUtf8(edit.place) + ": ";
        if (!outcome.ok) {
            PrintDiagnostic(console_, translation_.Sources().par, {.text = place + kq_base::ToUtf8(outcome.message)});
        } else if (!outcome.added.empty()) {
            notes_.push_back(place + "added as " + kq_base::ToUtf8(outcome.added));
        }
    }

    void PrintNotes() {
        const std::string loss = ReadBackLoss(translation_.Options(), translation_.Report(),
                                              translation_.Sources().pdt.Text(), *par_, *dmf_);
        if (!loss.empty()) {
            notes_.push_back(loss);
        }
        for (const std::string &note : notes_) {
            PrintDiagnostic(console_, translation_.Sources().par, {.kind = TDiagnosticKind::kNote, .text = note});
        }
    }

    std::string Output() const {
        if (arguments_.json) {
            TJson json = ReportJson(translation_.Report());
            json["text"] = TextOrNull(par_);
            json["edits"] = json_;
            json["dmf"] = TextOrNull(dmf_);
            return Dumped(json);
        }
        if (!good_) {
            return "";
        }
        return (IsFile(arguments_.output) ? "" : *par_) +
               (arguments_.dmf_output && !IsFile(arguments_.dmf_output) ? *dmf_ : "");
    }

    const TArguments &arguments_;
    TConsole &console_;
    CTranslation &translation_;
    bool good_ = true;
    TJson json_ = TJson::array();
    std::vector<std::string> notes_;  ///< for the case that all goes well
    std::optional<std::string> par_;
    std::optional<std::string> dmf_;
};

int RunEdits(const TArguments &arguments, TConsole &console, bool with_value, TCarryOut carry_out) {
    TEdits edits;
    CTranslation translation;
    if (!ReadEdits(arguments, console, with_value, edits) || !CheckOutputs(arguments, console) ||
        !translation.Read(arguments, console, true)) {
        return kFailed;
    }
    translation.Translate(arguments, console, false);
    CEditing editing(arguments, console, translation);
    editing.CarryOut(translation.Report().Good() ? edits : TEdits(), carry_out);
    return editing.HandOut();
}

}  // namespace

int RunSet(const TArguments &arguments, TConsole &console) {
    return RunEdits(arguments, console, true, [](CConfiguration &configuration, const TEdit &edit) {
        return configuration.Set(edit.place, edit.value);
    });
}

int RunAdd(const TArguments &arguments, TConsole &console) {
    return RunEdits(arguments, console, false,
                    [](CConfiguration &configuration, const TEdit &edit) { return configuration.Add(edit.place); });
}

int RunRemove(const TArguments &arguments, TConsole &console) {
    return RunEdits(arguments, console, false,
                    [](CConfiguration &configuration, const TEdit &edit) { return configuration.Remove(edit.place); });
}
