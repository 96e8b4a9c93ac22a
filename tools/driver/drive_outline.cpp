#include "platform/base/code_page.h"
#include "tools/console/diagnostics.h"
#include "tools/console/terminal_text.h"
#include "tools/driver/drive_report.h"
#include "tools/driver/driver_words.h"
#include "tools/driver/hex_text.h"
#include "tools/print/text_table.h"

namespace {

std::string NumbersText(const TDriverChannels &channels) {
    const std::string first = std::to_string(channels.first);
    return channels.count == 1 ? first : first + " - " + std::to_string(channels.first + (channels.count - 1));
}

class CDriveOutline : public CDriveReport {
public:
    explicit CDriveOutline(TConsole &console) : console_(console) {}

    void Head(const TDriveHead &head) override {
        module_ = head.module;
        par_ = head.par;
        if (head.version) {
            console_.out.Write(module_ + ": " + TerminalText(kq_base::ToUtf8(head.description.value_or(""))) +
                               ", version " + HexText(*head.version) + "\n");
        }
    }

    void Parameters(const TParametersAnswer &answer) override {
        if (!answer.ok) {
            const std::string detail = answer.detail.empty() ? "" : " (" + answer.detail + ")";
            PrintError(console_, par_, TerminalText(kq_base::ToUtf8(answer.message + detail)));
        }
    }

    void Channels(const std::optional<std::vector<TDriverChannels>> &channels) override {
        if (!channels) {
            console_.out.Write("The driver doesn't list its channels.\n");
            return;
        }
        std::vector<std::vector<std::string>> rows = {{"CHANNELS", "TYPE", "DIRECTION", "DESCRIPTION"}};
        for (const TDriverChannels &each : *channels) {
            const std::string detail = each.detail.empty() ? "" : " (" + each.detail + ")";
            rows.push_back({NumbersText(each), ChannelTypeWord(each).value_or("unknown"),
                            ChannelDirectionWord(each).value_or("unknown"),
                            TerminalText(kq_base::ToUtf8(each.description + detail))});
        }
        console_.out.Write(TextTable(rows));
    }

    void Round(const TDrivePlan &plan, const std::optional<THalfRound> &written,
               const std::optional<THalfRound> &read) override {
        console_.out.Write("round " + std::to_string(++round_) + "\n");
        Half(TWay::kWrite, plan.writes, written);
        Half(TWay::kRead, plan.reads, read);
    }

    void End(bool interrupted, bool /*good*/, const std::string &message) override {
        if (!message.empty()) {
            PrintError(console_, module_, message);
        }
        if (interrupted) {
            console_.out.Write("interrupted; the driver was stopped\n");
        }
    }

private:
    enum class TWay : std::uint8_t { kWrite, kRead };

    void Half(TWay way, const std::deque<TDrivePoint> &points, const std::optional<THalfRound> &half) {
        if (!half) {
            return;
        }
        const bool read = way == TWay::kRead;
        const std::string what = read ? "  read  " : "  write ";
        for (std::size_t at = 0; at < points.size(); ++at) {
            const TDrivePoint &point = points[at];
            const TStepResult &result = half->values[at];
            std::string line = what + std::to_string(point.channel) + " ";
            line.append(point.value.TypeWord());
            if (result.ok || !read) {
                line += " = " + TerminalText(point.value.Text());
            }
            if (result.ok && read) {
                line += "  (status " + std::to_string(result.status) + ")";
            }
            console_.out.Write(line + (result.ok ? "" : ": " + FailureText(result)) + "\n");
        }
        if (!half->whole.ok) {
            console_.out.Write(what + "failed: " + FailureText(half->whole) + "\n");
        }
    }

    static std::string FailureText(const TStepResult &result) {
        return TerminalText(result.text) + (result.code != 0 ? " [" + HexText(result.code) + "]" : "");
    }

    TConsole &console_;
    std::string module_;
    std::string par_;
    std::uint64_t round_ = 0;
};

}  // namespace

std::unique_ptr<CDriveReport> MakeDriveOutline(TConsole &console) { return std::make_unique<CDriveOutline>(console); }
