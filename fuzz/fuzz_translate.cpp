/// A whole translation. The input is template, parameter file and driver map file, in this order, with a form feed
/// between them.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "configurator/kq_cfg.h"

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Cuts off what precedes the next form feed.
std::string_view TakeText(std::string_view &rest) {
    const std::string_view text = rest.substr(0, rest.find('\f'));
    rest.remove_prefix(text.size() < rest.size() ? text.size() + 1 : text.size());
    return text;
}

struct TTexts {
    std::string par;
    std::string dmf;

    bool operator==(const TTexts &) const = default;
};

TTexts Written(const kq_cfg::CConfiguration &configuration) {
    return {configuration.ParText(), configuration.DmfText()};
}

bool SameMessages(const kq_cfg::TReport &left, const kq_cfg::TReport &right) {
    if (left.messages.size() != right.messages.size()) {
        return false;
    }
    for (std::size_t row = 0; row < left.messages.size(); ++row) {
        if (left.messages[row].text != right.messages[row].text ||
            left.messages[row].line != right.messages[row].line) {
            return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    const std::string_view pdt = TakeText(rest);
    const std::string_view par = TakeText(rest);
    const std::string_view dmf = rest;

    kq_cfg::CConfiguration configuration({.language = 1, .modules = "no-such-folder"});
    configuration.Translate(pdt, par, dmf);
    const kq_cfg::TReport first = configuration.Report();
    const TTexts written = Written(configuration);

    // Nothing of a translation is left in the next one, and what was written can be read.
    configuration.Translate(pdt, written.par, written.dmf);
    Written(configuration);
    configuration.TranslateForRepair(pdt, par);
    Written(configuration);
    configuration.Translate(pdt, par, dmf);
    Require(SameMessages(configuration.Report(), first));
    Require(Written(configuration) == written);

    // A driver map file that was written is a plain list of blocks: reading and writing keeps it, from the second time
    // on, since definitions may overlap and reading mends that.
    configuration.Translate({}, {}, written.dmf);
    const std::string once = configuration.DmfText();
    configuration.Translate({}, {}, once);
    Require(configuration.DmfText() == once);
    return 0;
}
