#include "configurator/value_reading.h"

#include <algorithm>

#include "model/dll_item.h"
#include "model/number_item.h"
#include "model/options_item.h"
#include "model/sheet_data.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

namespace {

/// Evaluating must not reserve channels.
bool CanEvaluate(const CDefaultValue &value, CParSheetData &data) {
    const CExpression *expression = value.Expression();
    if (expression == nullptr) {
        return true;
    }
    return std::none_of(expression->Nodes().begin(), expression->Nodes().end(), [&](const CExprNode &node) {
        const CVariable *const variable =
            node.kind == TExprKind::kReference ? data.FindVariable(node.value.text.View()) : nullptr;
        return node.kind == TExprKind::kFunction ||
               (variable != nullptr && variable->Stored().kind == TParKind::pvNewChannel);
    });
}

/// The entry of a choice that a text has at a position; false without any.
bool FindEntry(const CItem &item, std::string_view text, std::uint32_t position, std::uint32_t &index) {
    TMatchStep step;
    return item.Code() == TItemCode::kOptions
               ? static_cast<const COptionsItem &>(item).FindEntry(text, position, step, index)
               : static_cast<const CDllItem &>(item).FindEntry(text, position, step, index);
}

bool IsChoice(const CItem &item) { return item.Code() == TItemCode::kOptions || item.Code() == TItemCode::kDll; }

}  // namespace

CValueReading::CValueReading(const CItemSeq &items) : items_(items.Items()) {
    values_.reserve(items_.size());
    for (const auto &item : items_) {
        values_.push_back(InitialValue(*item));
    }
}

CValueReading::TValue CValueReading::InitialValue(const CItem &item) {
    TValue value;
    value.undefined = item.IsOptional() && item.Code() != TItemCode::kConst;
    value.number = item.Code() == TItemCode::kNumber ? item.Attributes().range_from : 0;
    return value;
}

/// Digits that make the number too large for 32 bits are left out.
void CValueReading::TakeDigits(const CItem &item, std::string_view digits, bool ends_pattern, TValue &value) {
    std::size_t length = digits.size();
    while (length != 0 && !kq_base::ParseDecimal(digits.substr(0, length), value.number)) {
        --length;
    }
    if (length != digits.size() && !ends_pattern) {
        value.number = static_cast<const CNumberItem &>(item).InRange(value.number);
    }
}

CValueReading::TValue CValueReading::ReadPiece(CItem &item, std::string_view text, const TCut &cut, bool ends_text,
                                               bool ends_pattern) {
    TValue value = InitialValue(item);
    const std::string_view piece = text.substr(cut.first, cut.end - cut.first);
    value.given = item.Code() != TItemCode::kString || (ends_text && !piece.empty());
    if (piece.empty()) {
        return value;
    }
    if (item.Code() == TItemCode::kNumber) {
        TakeDigits(item, piece, ends_pattern, value);
        value.number = ends_text ? value.number : static_cast<const CNumberItem &>(item).InRange(value.number);
    } else if (item.Code() == TItemCode::kString) {
        value.text = piece;
    } else if (!IsChoice(item) || !FindEntry(item, text, cut.first, value.number)) {
        return value;
    }
    value.undefined = false;
    return value;
}

void CValueReading::TakeCuts(const CItemSeq &pattern, const std::vector<TCut> &cuts, std::string_view text) {
    const std::size_t count = std::min(cuts.size(), items_.size());
    for (std::size_t index = 0; index < count; ++index) {
        CItem &source = *pattern.Items()[cuts[index].item];
        if (source.Code() == items_[index]->Code()) {
            values_[index] = ReadPiece(source, text, cuts[index], index + 1 == cuts.size(),
                                       cuts[index].item + 1 == pattern.Items().size());
        }
    }
}

bool CValueReading::ReplaceByCuts(const CItemSeq &pattern, const std::vector<TCut> &cuts, std::string_view text) {
    const bool lined_up = std::equal(cuts.begin(), cuts.end(), items_.begin(), items_.end(),
                                     [&](const TCut &cut, const std::unique_ptr<CItem> &item) {
                                         return pattern.Items()[cut.item]->Code() == item->Code();
                                     });
    if (!lined_up) {
        return false;
    }
    TakeCuts(pattern, cuts, text);
    for (std::size_t index = 0; index < items_.size(); ++index) {
        if (items_[index]->Code() == TItemCode::kNumber) {
            values_[index].number = static_cast<const CNumberItem &>(*items_[index]).InRange(values_[index].number);
        }
    }
    return true;
}

void CValueReading::AppendRaw(std::string_view separator, std::string_view text) {
    if (items_.empty()) {
        return;
    }
    TValue &value = values_.back();
    const CItem &item = *items_.back();
    if (item.Code() == TItemCode::kString) {
        if (!value.given) {
            value.text.Clear();
        }
        value.text.Append(separator);
        value.text.Append(text);
        value.given = true;
        value.undefined = false;
    } else if (IsChoice(item) && !text.empty() && FindEntry(item, text, 0, value.number)) {
        value.undefined = false;
    }
}

void CValueReading::TakeDefaults() {
    for (std::size_t index = 0; index < items_.size(); ++index) {
        const CItem &item = *items_[index];
        const CDefaultValue &default_value = item.Attributes().default_value;
        TValue &value = values_[index];
        if (!default_value.IsGiven() || value.given || value.undefined ||
            (item.Code() == TItemCode::kNumber && !item.IsEnabled()) || item.Owner()->Node() == nullptr ||
            !CanEvaluate(default_value, *item.Owner()->Node()->SheetData())) {
            continue;
        }
        TParValue result;
        default_value.Evaluate(result);
        if (item.Code() == TItemCode::kNumber && result.IsNumber()) {
            value.number = result.number;
        } else if (item.Code() == TItemCode::kString && result.kind == TParKind::pvText) {
            value.text = result.text;
        }
    }
}

std::string CValueReading::Shown(const CItem &item, const TValue &value) {
    if (value.undefined) {
        return std::string(item.NoneText().View());
    }
    switch (item.Code()) {
        case TItemCode::kNumber:
            return std::to_string(value.number);
        case TItemCode::kString:
            return std::string(value.text.View());
        case TItemCode::kOptions: {
            const auto &entries = static_cast<const COptionsItem &>(item).Entries();
            return std::string(value.number < entries.size() ? entries[value.number].label.View() : "");
        }
        case TItemCode::kDll: {
            const CNameList &names = static_cast<const CDllItem &>(item).Names();
            return std::string(value.number < names.size() ? names[value.number].View() : "");
        }
        default:
            return {};
    }
}

CItem *CValueReading::FindDifference(std::string &shown) const {
    for (std::size_t index = 0; index < items_.size(); ++index) {
        CItem &item = *items_[index];
        if (item.GetCellCount() == 0) {
            continue;
        }
        kq_base::CTextBuffer present;
        bool disabled = false;
        std::uint32_t cell = 1;
        item.GetCell(cell, present, TCellField::kValue, disabled);
        shown = Shown(item, values_[index]);
        if (!disabled && (item.IsUndefined() != values_[index].undefined || present.View() != shown)) {
            return &item;
        }
    }
    return nullptr;
}

}  // namespace kq_pdt
