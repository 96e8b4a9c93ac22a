/// Any text as a template, compiled and described without a host and with one; the same text as an expression; and its
/// first line as a value list against the rest.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "configurator/kq_cfg.h"

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// A language chooses among texts. It has no say in what compiles.
void CompileTemplate(std::string_view text) {
    const kq_cfg::TTemplate alone = kq_cfg::DescribeTemplate({}, text, {});
    const kq_cfg::TTemplate hosted = kq_cfg::DescribeTemplate({.language = 1, .modules = "no-such-folder"}, text, {});
    Require(alone.report.result.ok == hosted.report.result.ok);
    Require(alone.report.result.line == hosted.report.result.line);
    Require(alone.report.result.position == hosted.report.result.position);
    Require(alone.sections.size() == hosted.sections.size());
}

void EvaluateExpression(std::string_view text) {
    kq_cfg::TValue number;
    number.kind = kq_cfg::TValueKind::kNumber;
    number.number = 7;
    kq_cfg::TValue word;
    word.kind = kq_cfg::TValueKind::kText;
    word.text = "ON";
    kq_cfg::EvaluateExpression(text, {{"number", number}, {"v", word}});
}

/// An item of a match shows a piece of the text or the value of an empty piece, never more than one text
/// holds.
void MatchValueList(std::string_view text) {
    const std::size_t end = text.find('\n');
    const std::string_view rest = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    const kq_cfg::TMatch match = kq_cfg::MatchValueList(text.substr(0, end), rest);
    Require(match.ok || !match.matched);
    for (const kq_cfg::TMatchItem &item : match.items) {
        Require(!item.text || item.text->size() <= 255);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    CompileTemplate(text);
    EvaluateExpression(text);
    MatchValueList(text);
    return 0;
}
