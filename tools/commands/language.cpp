#include <algorithm>

#include "configurator/kq_cfg.h"
#include "platform/base/code_page.h"
#include "platform/base/number_text.h"
#include "tools/commands.h"
#include "tools/console/diagnostics.h"
#include "tools/console/text_argument.h"
#include "tools/print/expression_text.h"
#include "tools/print/item_words.h"
#include "tools/print/json_expression.h"

using kq_cfg::TEvaluation;
using kq_cfg::TMatch;
using kq_cfg::TMatchItem;
using kq_cfg::TValue;
using kq_cfg::TValueKind;
using kq_cfg::TVariables;

namespace {

constexpr std::string_view kDigits = "0123456789";

/// The value that the right side of NAME=VALUE means. False for digits that make no number of 32 bits.
bool ParseValue(std::string_view text, TValue &value) {
    if (!text.empty() && text.find_first_not_of(kDigits) == std::string_view::npos) {
        value.kind = TValueKind::kNumber;
        return kq_base::ParseDecimal(text, value.number);
    }
    if (text == "true" || text == "false") {
        value.kind = TValueKind::kBool;
        value.truth = text == "true";
    } else if (text == "nedef") {
        value.kind = TValueKind::kUndefined;
    } else {
        const bool quoted = text.size() >= 2 && text.front() == '\'' && text.back() == '\'';
        value.kind = TValueKind::kText;
        value.text = quoted ? text.substr(1, text.size() - 2) : text;
    }
    return true;
}

/// The variables of --var, ascending by name. If one isn't written as it should be, the reason is printed and the
/// result is false.
bool ParseVariables(const std::vector<std::string> &typed, TConsole &console, TVariables &variables) {
    for (const std::string &each : typed) {
        const std::string what = "--var " + each;
        std::string text;
        if (!ToCodePage(console, what, each, text)) {
            return false;
        }
        const std::size_t equal = text.find('=');
        if (equal == std::string::npos || equal == 0) {
            PrintError(console, what, "this should be NAME=VALUE");
            return false;
        }
        TValue value;
        if (!ParseValue(std::string_view(text).substr(equal + 1), value)) {
            PrintError(console, what, "the number is above 4294967295");
            return false;
        }
        variables.emplace_back(text.substr(0, equal), std::move(value));
    }
    std::sort(variables.begin(), variables.end(),
              [](const auto &left, const auto &right) { return left.first < right.first; });
    const auto twice = std::adjacent_find(variables.begin(), variables.end(), [](const auto &left, const auto &right) {
        return left.first == right.first;
    });
    if (twice != variables.end()) {
        PrintError(console, "--var", "the variable " + kq_base::ToUtf8(twice->first) + " is declared twice");
        return false;
    }
    return true;
}

void PrintCompileError(TConsole &console, std::string_view what, const std::string &message) {
    PrintError(console, what, message.empty() ? "this can't be understood" : kq_base::ToUtf8(message));
}

TJson EvaluationJson(const TEvaluation &evaluation) {
    return {{"ok", evaluation.ok},
            {"message", TextJson(evaluation.message)},
            {"value", evaluation.ok ? ValueJson(evaluation.value) : TJson(nullptr)},
            {"tree", evaluation.ok ? ExprJson(evaluation.tree) : TJson(nullptr)}};
}

TJson MatchJson(const TMatch &match) {
    TJson items = TJson::array();
    for (const TMatchItem &item : match.items) {
        items.push_back({{"kind", ItemKindWord(item.kind)}, {"text", TextOrNull(item.text)}});
    }
    return {{"ok", match.ok},
            {"message", TextJson(match.message)},
            {"matched", match.matched},
            {"items", std::move(items)}};
}

void PrintMatch(TConsole &console, const TMatch &match) {
    if (!match.matched) {
        console.out.Write("no match\n");
        return;
    }
    for (const TMatchItem &item : match.items) {
        console.out.Write(ItemKindWord(item.kind));
        console.out.Write(item.text ? " " + QuotedText(*item.text) + "\n" : "\n");
    }
}

}  // namespace

int RunEval(const TArguments &arguments, TConsole &console) {
    std::string expression;
    TVariables variables;
    if (!ToCodePage(console, "EXPR", arguments.expression, expression) ||
        !ParseVariables(arguments.variables, console, variables)) {
        return kFailed;
    }
    const TEvaluation evaluation = kq_cfg::EvaluateExpression(expression, variables);
    if (arguments.json) {
        console.out.Write(Dumped(EvaluationJson(evaluation)));
    } else if (evaluation.ok) {
        console.out.Write(ValueText(evaluation.value) + "\n");
    } else {
        PrintCompileError(console, "EXPR", evaluation.message);
    }
    return evaluation.ok ? kDone : kInputErrors;
}

int RunMatch(const TArguments &arguments, TConsole &console) {
    std::string list;
    std::string text;
    if (!ToCodePage(console, "VALUELIST", arguments.expression, list) ||
        !ToCodePage(console, "TEXT", arguments.text, text)) {
        return kFailed;
    }
    const TMatch match = kq_cfg::MatchValueList(list, text);
    if (arguments.json) {
        console.out.Write(Dumped(MatchJson(match)));
    } else if (match.ok) {
        PrintMatch(console, match);
    } else {
        PrintCompileError(console, "VALUELIST", match.message);
    }
    if (!match.ok) {
        return kFailed;
    }
    return match.matched ? kDone : kInputErrors;
}
