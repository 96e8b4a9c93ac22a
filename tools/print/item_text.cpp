#include "tools/print/item_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/base/code_page.h"
#include "tools/print/expression_text.h"
#include "tools/print/item_words.h"

using kq_cfg::TConditionRow;
using kq_cfg::TExprKind;
using kq_cfg::TItem;
using kq_cfg::TItemKind;
using kq_cfg::TMapRow;

namespace {

constexpr std::size_t kShownEntries = 6;  ///< options that are shown; of more only how many there are

constexpr std::uint32_t kLastChannel = 0x7FFFFFFF;

std::string Joined(const std::vector<std::string> &parts, std::string_view separator) {
    std::string text;
    for (const std::string &part : parts) {
        text += text.empty() ? part : std::string(separator) + part;
    }
    return text;
}

std::string RangeText(const TItem &item) {
    if (item.range_from == 0 && item.range_to == 0) {
        return "";
    }
    if (item.range_from == 1 && item.range_to == kLastChannel) {
        return "any channel";
    }
    const std::string from = std::to_string(item.range_from);
    return item.range_to < item.range_from ? "from " + from : from + " to " + std::to_string(item.range_to);
}

std::string EntriesText(const TItem &item) {
    std::vector<std::string> texts(std::min(item.entries.size(), kShownEntries));
    for (std::size_t at = 0; at < texts.size(); ++at) {
        texts[at] = QuotedText(item.entries[at].text);
    }
    if (item.entries.size() > kShownEntries) {
        texts.push_back("... " + std::to_string(item.entries.size()) + " in all");
    }
    return Joined(texts, ", ");
}

std::string MapText(std::string_view what, const std::vector<TMapRow> &rows,
                    const std::optional<std::string> &variable) {
    if (variable) {
        return std::string(what) + " by %" + kq_base::ToUtf8(*variable) + "%";
    }
    std::vector<std::string> texts;
    std::transform(rows.begin(), rows.end(), std::back_inserter(texts), [](const TMapRow &row) {
        return row.text.empty() ? row.word : QuotedText(row.text) + ": " + row.word;
    });
    return rows.empty() ? "" : std::string(what) + " " + Joined(texts, ", ");
}

/// The roles that no other part of the line shows.
std::vector<std::string> RoleTexts(const TItem &item) {
    std::vector<std::string> texts;
    for (const std::string &role : item.roles) {
        if (role != "ch_type" && role != "ch_direction") {
            texts.push_back(role);
        }
    }
    return texts;
}

/// All that is shown of an item after its kind, the most important first.
std::vector<std::string> Properties(const TItem &item) {
    std::vector<std::string> texts;
    const auto add = [&texts](const std::string &text) {
        if (!text.empty()) {
            texts.push_back(text);
        }
    };
    add(item.label.empty() ? "" : QuotedText(item.label));
    add(item.kind == TItemKind::kNumber ? RangeText(item) : "");
    add(EntriesText(item));
    add(item.default_value ? "default " + ExprText(*item.default_value) : "");
    for (const std::string &role : RoleTexts(item)) {
        add(role);
    }
    add(MapText("type", item.type_map, item.type_variable));
    add(MapText("direction", item.direction_map, item.direction_variable));
    add(item.fixed_count ? std::to_string(*item.fixed_count) + " channels" : "");
    add(item.optional && item.kind != TItemKind::kConst ? "optional" : "");
    add(item.case_sensitive ? "" : "any case");
    add(item.id ? "id %" + kq_base::ToUtf8(*item.id) + "%" : "");
    add(item.enable_if ? "if " + ExprText(*item.enable_if) : "");
    return texts;
}

std::string ItemText(const TItem &item) {
    std::string text(ItemKindWord(item.kind));
    if (item.kind == TItemKind::kConst) {
        text = QuotedText(item.text);
    } else if (item.kind == TItemKind::kVariable) {
        text = "%" + kq_base::ToUtf8(item.text) + "%";
    }
    const std::string properties = Joined(Properties(item), "; ");
    return properties.empty() ? text : text + "(" + properties + ")";
}

std::string RowsText(const std::optional<std::vector<TConditionRow>> &rows) {
    std::vector<std::string> texts;
    for (const TConditionRow &row : rows.value_or(std::vector<TConditionRow>())) {
        const bool always = row.condition.kind == TExprKind::kBool && row.condition.truth;
        const std::string word = row.word.value_or("undefined");
        texts.push_back(always ? word : word + " if " + ExprText(row.condition));
    }
    return Joined(texts, ", ");
}

}  // namespace

std::string ItemListText(const std::vector<TItem> &items) {
    std::vector<std::string> texts;
    std::transform(items.begin(), items.end(), std::back_inserter(texts), ItemText);
    return Joined(texts, " + ");
}

std::string GroupText(const TItem &group) {
    std::vector<std::string> texts;
    texts.push_back("from " + (group.from ? ExprText(*group.from) : "?") + " to " +
                    (group.to ? ExprText(*group.to) : "?"));
    for (const std::string &text : {RowsText(group.type_rows), RowsText(group.direction_rows),
                                    MapText("type", group.type_map, group.type_variable),
                                    MapText("direction", group.direction_map, group.direction_variable)}) {
        if (!text.empty()) {
            texts.push_back(text);
        }
    }
    return Joined(texts, "; ");
}
