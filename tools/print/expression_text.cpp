#include "tools/print/expression_text.h"

#include "platform/base/code_page.h"

using kq_cfg::TValue;
using kq_cfg::TValueKind;

std::string QuotedText(std::string_view text) { return kq_base::ToUtf8(kq_cfg::LiteralText(text)); }

std::string ValueText(const TValue &value) {
    switch (value.kind) {
        case TValueKind::kNone:
            return "no value";
        case TValueKind::kText:
            return QuotedText(value.text);
        case TValueKind::kNumber:
            return std::to_string(value.number);
        case TValueKind::kBool:
            return value.truth ? "true" : "false";
        case TValueKind::kNewChannel:
            return "create_new_channel";
        case TValueKind::kUndefined:
            break;
    }
    return "nedef";
}

std::string ExprText(const kq_cfg::TExpr &expression) { return kq_base::ToUtf8(kq_cfg::ExpressionText(expression)); }
