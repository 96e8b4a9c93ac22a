#include "tools/commands/read_back.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <unordered_map>
#include <vector>

#include "platform/base/code_page.h"
#include "tools/console/source_text.h"

namespace {

/// The lines of a text without line ends and with single blanks, since columns move when another line changes.
std::vector<std::string> BareLines(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        const auto end =
            std::unique(line.begin(), line.end(), [](char left, char right) { return left == ' ' && right == ' '; });
        line.erase(end, line.end());
        line.erase(line.find_last_not_of('\r') + 1);
        lines.push_back(line);
    }
    return lines;
}

/// The first line of a text that another text doesn't have as often, anywhere: unknown sections change their position.
/// Empty if there is none.
std::string FirstLineNotIn(const std::string &other, const std::string &text) {
    std::unordered_map<std::string, std::size_t> counts;
    for (const std::string &line : BareLines(other)) {
        ++counts[line];
    }
    for (const std::string &line : BareLines(text)) {
        std::size_t &count = counts[line];
        if (count == 0) {
            return line;
        }
        --count;
    }
    return "";
}

std::string Quoted(std::string_view line) { return " \"" + kq_base::ToUtf8(line) + "\""; }

}  // namespace

std::string ReadBackLoss(const kq_cfg::TOptions &options, const kq_cfg::TReport &before, const std::string &pdt,
                         const std::string &par, const std::string &dmf) {
    kq_cfg::CConfiguration again(options);
    again.Translate(pdt, par, dmf);
    for (const kq_cfg::TMessage &message : again.Report().messages) {
        const bool known = std::any_of(before.messages.begin(), before.messages.end(),
                                       [&](const kq_cfg::TMessage &other) { return other.text == message.text; });
        if (!known) {
            return "reading the file that was written reports: " + kq_base::ToUtf8(message.text);
        }
    }
    const std::string text = again.ParText();
    if (const std::string lost = FirstLineNotIn(text, par); !lost.empty()) {
        return "this line doesn't read as it was written:" + Quoted(lost);
    }
    if (const std::string gained = FirstLineNotIn(par, text); !gained.empty()) {
        return "reading the file that was written adds a line:" + Quoted(gained);
    }
    if (const std::string lost = FirstLineNotIn(again.DmfText(), dmf); !lost.empty()) {
        return "this line of the driver map file doesn't read as it was written:" + Quoted(lost);
    }
    return "";
}
