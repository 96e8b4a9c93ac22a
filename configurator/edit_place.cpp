// A place is read from its end: first the number of a cell, then the number of a name. A sign that isn't followed by
// digits up to the end belongs to the name, and so does a second `/`, so that "km/h" or "Line:A" need no backslash.

#include "configurator/edit_place.h"

#include <vector>

#include "platform/base/number_text.h"

namespace kq_pdt {

namespace {

/// A text without its backslashes, and which characters follow one.
class CUnescapedText {
public:
    explicit CUnescapedText(std::string_view source) {
        for (std::size_t at = 0; at < source.size(); ++at) {
            const bool escape = source[at] == '\\' && at + 1 < source.size();
            at += escape ? 1 : 0;
            text_ += source[at];
            escaped_.push_back(escape);
        }
    }

    std::string_view Text() const { return text_; }

    std::size_t FindSeparator() const {
        std::size_t at = text_.find('/');
        while (at != std::string::npos && escaped_[at]) {
            at = text_.find('/', at + 1);
        }
        return at;
    }

    /// Cuts one of the signs and the digits after it off the end of the part from begin. Gives the sign, or 0.
    char CutNumber(std::size_t begin, std::size_t &end, std::string_view signs, std::uint32_t &number) const {
        const std::string_view part = Text().substr(begin, end - begin);
        const std::size_t at = part.find_last_not_of("0123456789");
        if (at == std::string_view::npos || at + 1 == part.size() || escaped_[begin + at] ||
            signs.find(part[at]) == std::string_view::npos) {
            return 0;
        }
        if (!kq_base::ParseDecimal(part.substr(at + 1), number)) {
            number = UINT32_MAX;
        }
        end = begin + at;
        return part[at];
    }

    /// False if a number was written and is 0.
    bool TakeName(std::size_t begin, std::size_t end, TPlaceName &name) const {
        const bool numbered = CutNumber(begin, end, "#", name.number) != 0;
        name.text = text_.substr(begin, end - begin);
        return !numbered || name.number != 0;
    }

private:
    std::string text_;
    std::vector<bool> escaped_;
};

std::string WriteName(const TPlaceName &name, std::string_view signs) {
    std::string text;
    for (const char character : name.text) {
        text += signs.find(character) != std::string_view::npos ? "\\" : "";
        text += character;
    }
    return name.number == 0 ? text : text + "#" + kq_base::DecimalText(name.number);
}

}  // namespace

bool ParseEditPlace(std::string_view text, TEditPlace &place) {
    const CUnescapedText source(text);
    const std::size_t separator = source.FindSeparator();
    const bool has_key = separator != std::string::npos;
    const std::size_t last_name = has_key ? separator + 1 : 0;
    std::size_t end = source.Text().size();
    const char sign = source.CutNumber(last_name, end, has_key ? ":@" : ":", place.number);
    if (sign != 0) {
        place.cell = sign == ':' ? TEditPlace::TCell::kValue : TEditPlace::TCell::kName;
    }
    bool counts = sign == 0 || place.number != 0;
    if (has_key) {
        counts = source.TakeName(last_name, end, place.key.emplace()) && counts;
    }
    return source.TakeName(0, has_key ? separator : end, place.section) && counts;
}

// The `=` ends a place on the command line.
std::string WriteSectionName(const TPlaceName &name) { return WriteName(name, "\\/#:="); }

std::string WriteKeyName(const TPlaceName &name) { return WriteName(name, "\\#:@="); }

}  // namespace kq_pdt
