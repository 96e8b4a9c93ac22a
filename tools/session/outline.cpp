#include "tools/session/outline.h"

#include <algorithm>

namespace {

constexpr std::size_t kStep = 2;

std::string Indented(std::size_t indent, const std::string &text) { return std::string(indent, ' ') + text + "\n"; }

std::string ScalarText(const TJson &value) {
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (value.is_boolean()) {
        return value.get<bool>() ? "yes" : "no";
    }
    return value.is_null() ? "-" : value.dump();
}

/// Lines of a text, each after a bar, so that blanks and empty lines are seen.
std::string BlockText(const std::string &text, std::size_t indent) {
    std::string block;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::size_t length = end - start - (end > start && text[end - 1] == '\r' ? 1 : 0);
        block += Indented(indent, "| " + text.substr(start, length));
        start = end + 1;
    }
    return block;
}

std::string CellsText(const TJson &cells) {
    std::string text;
    for (const TJson &cell : cells) {
        const TJson &shown = cell["text"];
        text += (&cell == &cells.front() ? "" : " | ") + (shown.is_null() ? "(disabled)" : shown.get<std::string>());
    }
    text.erase(text.find_last_not_of(" |") + 1);
    return text;
}

/// Rows with their places; the tables below them follow them. Recurses as deep as tables nest.
std::string RowsText(const TJson &table, const std::string &above, std::size_t indent) {
    std::string text;
    std::size_t number = 0;
    for (const TJson &row : table["rows"]) {
        const std::string place = above + std::to_string(++number);
        const TJson problem = row.value("problem", TJson(nullptr));
        text += Indented(indent, place + "  " + CellsText(row["cells"]) +
                                     (problem.is_null() ? "" : "  (" + problem.get<std::string>() + ")"));
        if (row.contains("table") && !row["table"].is_null()) {
            text += RowsText(row["table"], place + ".", indent + kStep);
        }
    }
    return text;
}

bool IsFlat(const TJson &value) {
    return std::none_of(value.begin(), value.end(), [](const TJson &each) { return each.is_object(); });
}

std::string FlatText(const TJson &array, const char *separator = ", ") {
    std::string text;
    for (const TJson &each : array) {
        text += (text.empty() ? "" : separator) + (each.is_array() ? FlatText(each, " ") : ScalarText(each));
    }
    return text;
}

/// An object of scalars in one line.
std::string MemberList(const TJson &object) {
    std::string text;
    for (const auto &[name, value] : object.items()) {
        text += (text.empty() ? "" : ", ") + name + ": " + ScalarText(value);
    }
    return text;
}

std::string ValueText(const std::string &name, const TJson &value, std::size_t indent);

std::string MembersText(const TJson &object, std::size_t indent) {
    std::string text;
    for (const auto &[name, value] : object.items()) {
        text += name == "rows" && !value.empty() && value[0].contains("cells") ? RowsText(object, "", indent)
                                                                               : ValueText(name, value, indent);
    }
    return text;
}

// Recurses as deep as the state is nested, which its form fixes.
std::string ValueText(const std::string &name, const TJson &value, std::size_t indent) {
    if (value.is_object()) {
        return Indented(indent, name) + MembersText(value, indent + kStep);
    }
    if (value.is_array() && IsFlat(value)) {
        return Indented(indent, name + ": " + FlatText(value));
    }
    if (value.is_array()) {
        std::string text = Indented(indent, name);
        for (const TJson &each : value) {
            const bool one_line =
                std::none_of(each.begin(), each.end(), [](const TJson &member) { return member.is_structured(); });
            text += one_line ? Indented(indent + kStep, MemberList(each))
                             : Indented(indent + kStep, "-") + MembersText(each, indent + 2 * kStep);
        }
        return text;
    }
    if (value.is_string() && value.get_ref<const std::string &>().find('\n') != std::string::npos) {
        return Indented(indent, name) + BlockText(value, indent + kStep);
    }
    return Indented(indent, name + ": " + ScalarText(value));
}

}  // namespace

std::string Outline(TScriptVerb verb, const TJson &given) {
    switch (verb) {
        case TScriptVerb::kState:
            return MembersText(given["state"], 0);
        case TScriptVerb::kSettings:
            return MembersText(given["settings"], 0);
        case TScriptVerb::kFile:
            return given["text"].is_null() ? "(no file)\n" : given["text"].get<std::string>();
        default:
            return {};
    }
}
