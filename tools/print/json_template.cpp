#include "tools/print/json_template.h"

#include "tools/print/item_words.h"
#include "tools/print/json_expression.h"
#include "tools/print/json_report.h"

using kq_cfg::TConditionRow;
using kq_cfg::TExpr;
using kq_cfg::TItem;
using kq_cfg::TItemKind;
using kq_cfg::TKey;
using kq_cfg::TMapRow;
using kq_cfg::TNode;
using kq_cfg::TOptionEntry;
using kq_cfg::TPar;
using kq_cfg::TSection;
using kq_cfg::TTemplate;

namespace {

TJson ExprOrNull(const std::optional<TExpr> &expression) { return expression ? ExprJson(*expression) : TJson(nullptr); }

TJson MapJson(const std::vector<TMapRow> &rows) {
    TJson array = TJson::array();
    for (const TMapRow &row : rows) {
        array.push_back({{"text", TextJson(row.text)}, {"word", TextJson(row.word)}});
    }
    return array;
}

TJson ConditionsJson(const std::optional<std::vector<TConditionRow>> &rows) {
    if (!rows) {
        return nullptr;
    }
    TJson array = TJson::array();
    for (const TConditionRow &row : *rows) {
        array.push_back({{"word", TextOrNull(row.word)}, {"condition", ExprJson(row.condition)}});
    }
    return array;
}

TJson EntriesJson(const std::vector<TOptionEntry> &entries) {
    TJson array = TJson::array();
    for (const TOptionEntry &entry : entries) {
        array.push_back({{"text", TextJson(entry.text)}, {"label", TextJson(entry.label)}});
    }
    return array;
}

TJson CommonItemJson(const TItem &item) {
    return {{"kind", ItemKindWord(item.kind)},
            {"noneText", TextJson(item.none_text)},
            {"comment", TextJson(item.comment)},
            {"roles", TextsJson(item.roles)},
            {"optional", item.optional},
            {"undefined", item.undefined},
            {"caseSensitive", item.case_sensitive},
            {"id", TextOrNull(item.id)},
            {"enableIf", ExprOrNull(item.enable_if)},
            {"typeMap", MapJson(item.type_map)},
            {"directionMap", MapJson(item.direction_map)},
            {"typeVariable", TextOrNull(item.type_variable)},
            {"directionVariable", TextOrNull(item.direction_variable)},
            {"fixedCount", NumberOrNull(item.fixed_count)}};
}

void AddLabels(const TItem &item, TJson &json) {
    json["label"] = TextJson(item.label);
    json["bubble"] = TextJson(item.bubble);
}

TJson ItemJson(const TItem &item) {
    TJson json = CommonItemJson(item);
    switch (item.kind) {
        case TItemKind::kConst:
            json["text"] = TextJson(item.text);
            break;
        case TItemKind::kVariable:
            json["variable"] = TextJson(item.text);
            break;
        case TItemKind::kNumber:
            json["value"] = item.number;
            json["rangeFrom"] = item.range_from;
            json["rangeTo"] = item.range_to;
            AddLabels(item, json);
            json["default"] = ExprOrNull(item.default_value);
            break;
        case TItemKind::kString:
            json["value"] = TextJson(item.text);
            AddLabels(item, json);
            json["default"] = ExprOrNull(item.default_value);
            break;
        case TItemKind::kOptions:
            AddLabels(item, json);
            json["entries"] = EntriesJson(item.entries);
            json["selected"] = NumberOrNull(item.selected);
            break;
        case TItemKind::kDll:
            AddLabels(item, json);
            json["procedures"] = TextsJson(item.procedures);
            break;
        case TItemKind::kGroup:
            json["from"] = ExprOrNull(item.from);
            json["to"] = ExprOrNull(item.to);
            json["typeRows"] = ConditionsJson(item.type_rows);
            json["directionRows"] = ConditionsJson(item.direction_rows);
            break;
    }
    return json;
}

TJson ItemsJson(const std::vector<TItem> &items) {
    TJson array = TJson::array();
    for (const TItem &item : items) {
        array.push_back(ItemJson(item));
    }
    return array;
}

TJson NameJson(const TNode &node) { return node.name ? ItemsJson(*node.name) : TJson(nullptr); }

TJson ParsJson(const std::vector<TPar> &pars) {
    TJson array = TJson::array();
    for (const TPar &par : pars) {
        array.push_back({{"items", ItemsJson(par.items)},
                         {"writeIfAll", par.write_if_all},
                         {"lineVariable", TextOrNull(par.line_variable)}});
    }
    return array;
}

TJson KeyJson(const TKey &key) {
    return {{"flags", TextsJson(key.flags)},
            {"label", TextJson(key.label)},
            {"name", NameJson(key)},
            {"writeIfAll", key.write_if_all},
            {"lineVariable", TextOrNull(key.line_variable)},
            {"variables", VariablesJson(key.variables)},
            {"pars", ParsJson(key.pars)},
            {"groups", ItemsJson(key.groups)}};
}

TJson SectionJson(const TSection &section) {
    TJson keys = TJson::array();
    for (const TKey &key : section.keys) {
        keys.push_back(KeyJson(key));
    }
    return {{"flags", TextsJson(section.flags)},
            {"name", NameJson(section)},
            {"writeIfAll", section.write_if_all},
            {"lineVariable", TextOrNull(section.line_variable)},
            {"dependOn", TextOrNull(section.depend_on)},
            {"variables", VariablesJson(section.variables)},
            {"keys", std::move(keys)},
            {"groups", ItemsJson(section.groups)}};
}

}  // namespace

TJson TemplateJson(const TTemplate &declared) {
    TJson sections = TJson::array();
    for (const TSection &section : declared.sections) {
        sections.push_back(SectionJson(section));
    }
    return {{"ok", declared.report.result.ok},
            {"message", TextJson(declared.report.result.message)},
            {"line", declared.report.result.line},
            {"position", declared.report.result.position},
            {"noChannels", declared.no_channels},
            {"canAddMultiple", declared.can_add_multiple},
            {"keywords", TextsJson(declared.keywords)},
            {"messages", MessagesJson(declared.report.messages)},
            {"channels", ChannelsJson(declared.channels)},
            {"variables", VariablesJson(declared.variables)},
            {"sections", std::move(sections)}};
}
