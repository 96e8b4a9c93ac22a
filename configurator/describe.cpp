#include "configurator/describe.h"

#include <array>

#include "model/channels_group_item.h"
#include "model/const_item.h"
#include "model/number_item.h"
#include "model/options_item.h"
#include "model/string_item.h"

namespace kq_cfg {

namespace {

using kq_pdt::TExprKind;

std::string_view OperatorWord(TExprKind kind) {
    switch (kind) {
        case TExprKind::kAdd:
            return "+";
        case TExprKind::kSubtract:
            return "-";
        case TExprKind::kMultiply:
            return "*";
        case TExprKind::kDivide:
            return "/";
        case TExprKind::kModulo:
            return "mod";
        case TExprKind::kNegate:
            return "neg";
        case TExprKind::kOr:
            return "or";
        case TExprKind::kAnd:
            return "and";
        case TExprKind::kNot:
            return "not";
        case TExprKind::kEqual:
            return "=";
        case TExprKind::kNotEqual:
            return "<>";
        case TExprKind::kLess:
            return "<";
        case TExprKind::kLessEqual:
            return "<=";
        case TExprKind::kGreater:
            return ">";
        default:
            return ">=";
    }
}

TExpr DescribeLiteral(const TParValue &value) {
    TExpr result;
    switch (value.kind) {
        case TParKind::pvNumber:
            result.kind = kq_cfg::TExprKind::kNumber;
            result.number = value.number;
            break;
        case TParKind::pvText:
            result.kind = kq_cfg::TExprKind::kText;
            result.text = value.text.View();
            break;
        case TParKind::pvBool:
            result.kind = kq_cfg::TExprKind::kBool;
            result.truth = value.IsTrue();
            break;
        default:
            break;
    }
    return result;
}

/// Recursion is safe here: the compiler limits how deep an expression nests.
TExpr DescribeNode(const kq_pdt::CExpression::TNodes &nodes, std::uint32_t index) {
    const kq_pdt::CExprNode &node = nodes[index];
    if (node.kind == TExprKind::kLiteral) {
        return DescribeLiteral(node.value);
    }
    TExpr result;
    if (node.kind == TExprKind::kReference) {
        result.kind = kq_cfg::TExprKind::kVariable;
        result.text = node.value.text.View();
        return result;
    }
    result.operands.push_back(DescribeNode(nodes, node.left));
    if (node.kind == TExprKind::kFunction) {
        result.kind = kq_cfg::TExprKind::kNewChannel;
        return result;
    }
    result.kind = kq_cfg::TExprKind::kOperator;
    result.text = OperatorWord(node.kind);
    if (node.right != kq_pdt::CExprNode::kNoChild) {
        result.operands.push_back(DescribeNode(nodes, node.right));
    }
    return result;
}

std::optional<TExpr> DescribeDefault(const kq_pdt::CDefaultValue &value) {
    if (!value.IsGiven()) {
        return std::nullopt;
    }
    return value.Expression() != nullptr ? Describe(*value.Expression()) : DescribeLiteral(value.Literal());
}

std::vector<TMapRow> DescribeMap(const kq_pdt::TValueMap &map) {
    std::vector<TMapRow> rows;
    for (const kq_pdt::CValueMapEntry &row : map) {
        rows.push_back({std::string(row.text.View()), std::string(kq_pdt::KeywordText(row.code))});
    }
    return rows;
}

/// A keyword of the template, none where it is one that doesn't count.
std::optional<std::string> WordIf(bool counts, std::uint32_t code) {
    return counts ? std::optional<std::string>(kq_pdt::KeywordText(code)) : std::nullopt;
}

/// The rows of a group; counts says which words are types or directions.
std::optional<std::vector<TConditionRow>> DescribeRows(const std::unique_ptr<kq_pdt::CChannelCondList> &rows,
                                                       bool counts(std::uint32_t code)) {
    if (!rows) {
        return std::nullopt;
    }
    std::vector<TConditionRow> result;
    for (const kq_pdt::CChannelCondRow &row : *rows) {
        result.push_back({WordIf(counts(row.word), row.word), Describe(*row.condition)});
    }
    return result;
}

std::vector<std::string> RoleWords(const kq_pdt::CItem &item) {
    constexpr std::array<std::pair<kq_pdt::TRole, std::string_view>, 7> kRoles = {{
        {kq_pdt::roleChType, "ch_type"},
        {kq_pdt::roleChFrom, "ch_from"},
        {kq_pdt::roleChTo, "ch_to"},
        {kq_pdt::roleChNumber, "ch_number"},
        {kq_pdt::roleChDirection, "ch_direction"},
        {kq_pdt::roleChCount, "ch_count"},
        {kq_pdt::roleReadAll, "read_all"},
    }};
    std::vector<std::string> words;
    for (const auto &[role, word] : kRoles) {
        if (item.HasRole(role)) {
            words.emplace_back(word);
        }
    }
    return words;
}

void DescribeChannelAttributes(const kq_pdt::TChannelAttributes &channel, TItem &result) {
    result.type_map = DescribeMap(channel.type_map);
    result.direction_map = DescribeMap(channel.direction_map);
    if (channel.type_variable) {
        result.type_variable = channel.type_variable->Name();
    }
    if (channel.direction_variable) {
        result.direction_variable = channel.direction_variable->Name();
    }
    if (channel.fixed_keyword != 0) {
        result.fixed_count = channel.fixed_count;
    }
}

void DescribeCommon(kq_pdt::CItem &item, TItem &result) {
    const kq_pdt::TItemAttributes &attributes = item.Attributes();
    result.none_text = item.NoneText().View();
    result.comment = attributes.Comment();
    result.roles = RoleWords(item);
    result.optional = item.IsOptional();
    result.undefined = item.IsUndefined();
    result.case_sensitive = attributes.case_sensitive;
    result.label = attributes.label.View();
    result.bubble = attributes.bubble.View();
    result.range_from = attributes.range_from;
    result.range_to = attributes.range_to;
    result.default_value = DescribeDefault(attributes.default_value);
    if (item.IdVariable() != nullptr) {
        result.id = item.IdVariable()->Name();
    }
    if (attributes.enable_if) {
        result.enable_if = Describe(attributes.enable_if->Expression());
    }
    if (attributes.channel) {
        DescribeChannelAttributes(*attributes.channel, result);
    }
}

void DescribeGroup(const kq_pdt::CChannelsGroupItem &group, TItem &result) {
    if (group.From() != nullptr) {
        result.from = Describe(*group.From());
    }
    if (group.To() != nullptr) {
        result.to = Describe(*group.To());
    }
    result.type_rows = DescribeRows(group.TypeRows(), kq_pdt::IsChannelType);
    result.direction_rows = DescribeRows(group.DirectionRows(), kq_pdt::IsDirection);
}

std::vector<TItem> DescribeItems(const kq_pdt::CItemSeq &items) {
    std::vector<TItem> result;
    for (const auto &item : items.Items()) {
        result.push_back(Describe(*item));
    }
    return result;
}

std::optional<std::string> LineVariable(const kq_pdt::CItemList &list) {
    const kq_pdt::CVarRefItem *variable = list.ListVariable();
    return variable != nullptr ? std::optional<std::string>(variable->Name()) : std::nullopt;
}

void DescribeNode(const kq_pdt::CDefNode &node, TNode &result) {
    constexpr std::array<std::pair<kq_pdt::TNodeFlag, std::string_view>, 5> kFlags = {{
        {kq_pdt::nfRequired, "required"},
        {kq_pdt::nfMultiple, "multiple"},
        {kq_pdt::nfModule, "module"},
        {kq_pdt::nfChannels, "channels"},
        {kq_pdt::nfUnrecognised, "unrecognised"},
    }};
    for (const auto &[flag, word] : kFlags) {
        if (node.Has(flag)) {
            result.flags.emplace_back(word);
        }
    }
    if (const kq_pdt::CItemList *names = node.Names()) {
        result.name = DescribeItems(names->Items());
        result.write_if_all = names->Items().WriteIfAll();
        result.line_variable = LineVariable(*names);
    }
    result.variables = Describe(node.Scope());
    for (const auto &group : node.Groups()) {
        result.groups.push_back(Describe(*group));
    }
}

TKey DescribeKey(const kq_pdt::CKeyDef &key) {
    TKey result;
    DescribeNode(key, result);
    result.label = key.Label().View();
    for (const auto &par : key.Pars()) {
        result.pars.push_back({DescribeItems(par->Items()), par->Items().WriteIfAll(), LineVariable(par->List())});
    }
    return result;
}

}  // namespace

TExpr Describe(const kq_pdt::CExpression &expression) { return DescribeNode(expression.Nodes(), 0); }

TValue Describe(const TParValue &value) {
    TValue result;
    switch (value.kind) {
        case TParKind::pvText:
            result.kind = TValueKind::kText;
            result.text = value.text.View();
            break;
        case TParKind::pvNumber:
            result.kind = TValueKind::kNumber;
            result.number = value.number;
            break;
        case TParKind::pvBool:
            result.kind = TValueKind::kBool;
            result.truth = value.IsTrue();
            break;
        case TParKind::pvNewChannel:
            result.kind = TValueKind::kNewChannel;
            break;
        case TParKind::pvUndefined:
            result.kind = TValueKind::kUndefined;
            break;
        default:
            break;
    }
    return result;
}

TVariables Describe(const kq_pdt::CVarScope *scope) {
    TVariables result;
    if (scope != nullptr) {
        for (const auto &[name, variable] : scope->Variables()) {
            result.emplace_back(name, Describe(variable->Stored()));
        }
    }
    return result;
}

TItemKind KindOf(const kq_pdt::CItem &item) {
    switch (item.Code()) {
        case kq_pdt::TItemCode::kConst:
            return TItemKind::kConst;
        case kq_pdt::TItemCode::kNumber:
            return TItemKind::kNumber;
        case kq_pdt::TItemCode::kString:
            return TItemKind::kString;
        case kq_pdt::TItemCode::kOptions:
            return TItemKind::kOptions;
        case kq_pdt::TItemCode::kDll:
            return TItemKind::kDll;
        case kq_pdt::TItemCode::kChannelsGroup:
            return TItemKind::kGroup;
        default:
            return TItemKind::kVariable;
    }
}

TItem Describe(kq_pdt::CItem &item) {
    TItem result;
    result.kind = KindOf(item);
    DescribeCommon(item, result);
    switch (result.kind) {
        case TItemKind::kConst:
            result.text = static_cast<const kq_pdt::CConstItem &>(item).Text();
            break;
        case TItemKind::kNumber:
            result.number = static_cast<const kq_pdt::CNumberItem &>(item).Value();
            break;
        case TItemKind::kString:
            result.text = static_cast<const kq_pdt::CStringItem &>(item).Value();
            break;
        case TItemKind::kOptions: {
            const auto &options = static_cast<const kq_pdt::COptionsItem &>(item);
            for (const kq_pdt::COptionEntry &entry : options.Entries()) {
                result.entries.push_back({std::string(entry.text.View()), std::string(entry.label.View())});
            }
            if (options.SelectedIndex() < options.Entries().size()) {
                result.selected = options.SelectedIndex();
            }
            break;
        }
        case TItemKind::kDll:
            for (const kq_base::TText &procedure : static_cast<const kq_pdt::CDllItem &>(item).Names()) {
                result.procedures.emplace_back(procedure.View());
            }
            break;
        case TItemKind::kVariable:
            result.text = static_cast<const kq_pdt::CVarRefItem &>(item).Name();
            break;
        case TItemKind::kGroup:
            DescribeGroup(static_cast<const kq_pdt::CChannelsGroupItem &>(item), result);
            break;
    }
    return result;
}

TSection Describe(const kq_pdt::CSectionDef &section) {
    TSection result;
    DescribeNode(section, result);
    if (section.DependOn() != nullptr) {
        result.depend_on = section.DependOn()->Name();
    }
    for (const auto &key : section.Keys()) {
        result.keys.push_back(DescribeKey(*key));
    }
    return result;
}

std::vector<TChannel> Describe(const kq_pdt::CChannelRangeTable &ranges) {
    std::vector<TChannel> result;
    kq_pdt::CChannelRange range;
    for (std::uint32_t row = 0; ranges.GetRow(row, range); ++row) {
        TChannel channel;
        channel.first = range.first;
        channel.last = range.last;
        channel.type = WordIf(kq_pdt::IsChannelType(range.type), range.type);
        channel.direction = WordIf(kq_pdt::IsDirection(range.direction), range.direction);
        channel.defined = range.defined;
        channel.type_free = range.typeFree;
        channel.direction_free = range.directionFree;
        channel.name = range.name.View();
        result.push_back(std::move(channel));
    }
    return result;
}

}  // namespace kq_cfg
