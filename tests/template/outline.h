#pragma once

#include <string>

#include "configurator/kq_cfg.h"

/// Templates and expressions as one short line of text, so that a case of a table fits a line. An item shows its kind
/// and what differs from a bare one; an expression has parentheses around every operator.

namespace outline {

inline std::string Quoted(const std::string &text) { return "'" + text + "'"; }

inline std::string Print(const kq_cfg::TExpr &expr) {
    switch (expr.kind) {
        case kq_cfg::TExprKind::kNumber:
            return std::to_string(expr.number);
        case kq_cfg::TExprKind::kText:
            return Quoted(expr.text);
        case kq_cfg::TExprKind::kBool:
            return expr.truth ? "true" : "false";
        case kq_cfg::TExprKind::kUndefined:
            return "nedef";
        case kq_cfg::TExprKind::kVariable:
            return "%" + expr.text + "%";
        case kq_cfg::TExprKind::kNewChannel:
            return "new_channel(" + Print(expr.operands.at(0)) + ")";
        default:
            break;
    }
    if (expr.operands.size() == 1) {
        return expr.text + "(" + Print(expr.operands[0]) + ")";
    }
    return "(" + Print(expr.operands.at(0)) + " " + expr.text + " " + Print(expr.operands.at(1)) + ")";
}

inline std::string Print(const kq_cfg::TValue &value) {
    switch (value.kind) {
        case kq_cfg::TValueKind::kText:
            return Quoted(value.text);
        case kq_cfg::TValueKind::kNumber:
            return std::to_string(value.number);
        case kq_cfg::TValueKind::kBool:
            return value.truth ? "true" : "false";
        case kq_cfg::TValueKind::kNewChannel:
            return "channel";
        case kq_cfg::TValueKind::kUndefined:
            return "nedef";
        default:
            return "none";
    }
}

inline std::string Print(const std::string &name, const std::optional<kq_cfg::TExpr> &expr) {
    return expr ? " " + name + "=" + Print(*expr) : "";
}

inline std::string Print(const std::string &name, const std::vector<kq_cfg::TMapRow> &rows) {
    std::string text;
    for (const kq_cfg::TMapRow &row : rows) {
        text += " " + name + Quoted(row.text) + row.word;
    }
    return text;
}

inline std::string Print(const std::string &name, const std::optional<std::vector<kq_cfg::TConditionRow>> &rows) {
    std::string text;
    for (const kq_cfg::TConditionRow &row : rows.value_or(std::vector<kq_cfg::TConditionRow>())) {
        text += " " + name + ":" + row.word.value_or("-") + "=" + Print(row.condition);
    }
    return text;
}

inline std::string Print(const std::string &name, const std::string &text) {
    return text.empty() ? "" : " " + name + "=" + Quoted(text);
}

inline std::string Print(const kq_cfg::TItem &item) {
    constexpr const char *kKinds[] = {"const", "number", "string", "options", "dll", "variable", "group"};
    std::string text = kKinds[static_cast<int>(item.kind)];
    text += item.kind == kq_cfg::TItemKind::kConst ? Quoted(item.text) : Print("text", item.text);
    text += item.id ? " id=" + *item.id : "";
    text += item.range_from + item.range_to == 0
                ? ""
                : " " + std::to_string(item.range_from) + ".." + std::to_string(item.range_to);
    for (const std::string &role : item.roles) {
        text += " " + role;
    }
    text += item.fixed_count ? " count=" + std::to_string(*item.fixed_count) : "";
    text += Print("type", item.type_map) + Print("direction", item.direction_map);
    text += item.type_variable ? " type%" + *item.type_variable : "";
    text += item.direction_variable ? " direction%" + *item.direction_variable : "";
    text += Print("label", item.label) + Print("bubble", item.bubble) + Print("comment", item.comment);
    text += item.none_text.starts_with('<') ? "" : " nedef=" + Quoted(item.none_text);
    for (const kq_cfg::TOptionEntry &entry : item.entries) {
        text += " " + entry.text + ":" + entry.label;
    }
    for (const std::string &procedure : item.procedures) {
        text += " " + procedure + "()";
    }
    text += item.undefined ? " optional" : "";
    text += item.case_sensitive ? "" : " anycase";
    text += Print("default", item.default_value) + Print("if", item.enable_if);
    return text + Print("from", item.from) + Print("to", item.to) + Print("type", item.type_rows) +
           Print("direction", item.direction_rows);
}

inline std::string Print(const std::vector<kq_cfg::TItem> &items, bool all,
                         const std::optional<std::string> &line_variable) {
    std::string text = all ? "all" : "";
    const char *gap = all ? " " : "";
    for (const kq_cfg::TItem &item : items) {
        text += gap + Print(item);
        gap = " + ";
    }
    return text + (line_variable ? " = %" + *line_variable + "%" : "");
}

inline std::string Print(const kq_cfg::TVariables &variables) {
    std::string text;
    for (const auto &[name, value] : variables) {
        text += " %" + name + "=" + Print(value);
    }
    return text;
}

inline std::string Print(const kq_cfg::TNode &node) {
    std::string text = node.name ? " " + Print(*node.name, node.write_if_all, node.line_variable) : "";
    for (const std::string &flag : node.flags) {
        text += " " + flag;
    }
    text += Print(node.variables);
    for (const kq_cfg::TItem &group : node.groups) {
        text += " <" + Print(group) + ">";
    }
    return text;
}

/// What a template declares: root variables, words, no_channels, sections in brackets, keys in braces.
inline std::string Print(const kq_cfg::TTemplate &compiled) {
    std::string text = Print(compiled.variables);
    for (const std::string &word : compiled.keywords) {
        text += " " + word;
    }
    text += compiled.no_channels ? " nochannels" : "";
    for (const kq_cfg::TSection &section : compiled.sections) {
        text += " [" + (section.depend_on ? *section.depend_on + ":" : "") +
                Print(static_cast<const kq_cfg::TNode &>(section));
        for (const kq_cfg::TKey &key : section.keys) {
            text += " {" + Print("label", key.label) + Print(static_cast<const kq_cfg::TNode &>(key));
            for (const kq_cfg::TPar &par : key.pars) {
                text += " | " + Print(par.items, par.write_if_all, par.line_variable);
            }
            text += "}";
        }
        text += "]";
    }
    for (const kq_cfg::TChannel &channel : compiled.channels) {
        text += " " + std::to_string(channel.first) + ".." + std::to_string(channel.last) + ":" +
                channel.type.value_or("-") + ":" + channel.direction.value_or("-") + ":" + channel.name;
    }
    return text;
}

}  // namespace outline
