#include "tools/print/template_outline.h"

#include "platform/base/code_page.h"
#include "tools/print/channel_table.h"
#include "tools/print/expression_text.h"
#include "tools/print/item_text.h"

using kq_cfg::TItem;
using kq_cfg::TKey;
using kq_cfg::TNode;
using kq_cfg::TPar;
using kq_cfg::TSection;
using kq_cfg::TTemplate;
using kq_cfg::TValueKind;
using kq_cfg::TVariables;

namespace {

constexpr const char *kIndent = "  ";

std::string VariablesText(const TVariables &variables) {
    std::string text;
    for (const auto &[name, value] : variables) {
        text += (text.empty() ? "%" : ", %") + kq_base::ToUtf8(name) + "%";
        if (value.kind != TValueKind::kNone && value.kind != TValueKind::kUndefined) {
            text += " = " + ValueText(value);
        }
    }
    return text;
}

/// What follows a value list.
std::string ListTail(bool write_if_all, const std::optional<std::string> &line_variable) {
    std::string text = line_variable ? " = %" + kq_base::ToUtf8(*line_variable) + "%" : "";
    return write_if_all ? text + ", written only whole" : text;
}

std::string HeadText(const TNode &node) {
    std::string text = node.name ? ItemListText(*node.name) : "(no name)";
    text += ListTail(node.write_if_all, node.line_variable);
    for (const std::string &flag : node.flags) {
        text += " [" + flag + "]";
    }
    return text;
}

/// The variables and groups of a section or key.
std::string InnerLines(const TNode &node, const std::string &indent) {
    std::string text;
    if (!node.variables.empty()) {
        text += indent + "var " + VariablesText(node.variables) + "\n";
    }
    for (const TItem &group : node.groups) {
        text += indent + "channels " + GroupText(group) + "\n";
    }
    return text;
}

std::string KeyLines(const TKey &key) {
    const std::string indent = std::string(kIndent) + kIndent;
    std::string text = kIndent + HeadText(key);
    text += key.label.empty() ? "\n" : " " + QuotedText(key.label) + "\n";
    for (const TPar &par : key.pars) {
        text += indent + ItemListText(par.items) + ListTail(par.write_if_all, par.line_variable) + "\n";
    }
    return text + InnerLines(key, indent);
}

std::string SectionLines(const TSection &section) {
    std::string text = "section " + HeadText(section);
    text += section.depend_on ? " for each %" + kq_base::ToUtf8(*section.depend_on) + "%\n" : "\n";
    text += InnerLines(section, kIndent);
    for (const TKey &key : section.keys) {
        text += KeyLines(key);
    }
    return text;
}

}  // namespace

std::string TemplateOutline(const TTemplate &declared) {
    std::string text;
    for (const std::string &word : declared.keywords) {
        text += (text.empty() ? "keywords " : ", ") + kq_base::ToUtf8(word);
    }
    text += text.empty() ? "" : "\n";
    text += declared.no_channels ? "no channels\n" : "";
    if (!declared.variables.empty()) {
        text += "var " + VariablesText(declared.variables) + "\n";
    }
    if (!declared.channels.empty()) {
        text += "\n" + ChannelTable(declared.channels);
    }
    for (const TSection &section : declared.sections) {
        text += (text.empty() ? "" : "\n") + SectionLines(section);
    }
    return text;
}
