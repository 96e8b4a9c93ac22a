#include "configurator/cell_input.h"

#include <algorithm>
#include <array>
#include <vector>

#include "model/dll_item.h"
#include "platform/base/code_page.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

namespace {

/// Entries of a list that a refusal names at most.
constexpr std::size_t kNamedEntries = 12;

/// The limits of a number as the count box knows them.
bool CheckNumber(std::string_view value, const CIntegerCountBox &limits, std::string &reason) {
    std::uint32_t number = 0;
    if (!kq_base::ParseDecimal(value, number)) {
        const bool digits = !value.empty() && value.find_first_not_of("0123456789") == std::string_view::npos;
        reason = "'" + std::string(value) + (digits ? "' is above 4294967295" : "' isn't a number");
        return false;
    }
    if (number >= limits.From() && number <= limits.To()) {
        return true;
    }
    const std::string from = kq_base::DecimalText(limits.From());
    reason = kq_base::DecimalText(number) + (limits.To() == UINT32_MAX
                                                 ? " is below " + from
                                                 : " isn't in " + from + " to " + kq_base::DecimalText(limits.To()));
    return false;
}

bool CheckText(std::string_view value, std::string &reason) {
    if (value.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos) {
        reason = "a value is one line of text";
        return false;
    }
    if (value.size() > kq_base::TText::kBound) {
        reason = "a value has at most " + std::to_string(kq_base::TText::kBound) + " characters";
        return false;
    }
    return true;
}

/// An optional number or text: a free text, or the one entry that takes the value away.
bool EnterFreeText(TCellEditor &editor, std::string_view value, std::string &reason) {
    CComboBox &box = editor.ComboBox();
    if (value.empty() || value == editor.item->NoneText().View()) {
        return box.UserSelect(1);
    }
    const TItemAttributes &attributes = editor.item->Attributes();
    const bool number = editor.item->Code() == TItemCode::kNumber;
    const bool good =
        number ? CheckNumber(value, {0, attributes.range_from, attributes.range_to}, reason) : CheckText(value, reason);
    return good && box.UserType(value);
}

/// What the parameter file holds for the entries of a list, without the one that takes the value away.
std::vector<std::string_view> EntryTexts(const CItem &item) {
    std::vector<std::string_view> texts;
    if (item.Code() == TItemCode::kDll) {
        for (const kq_base::TText &name : static_cast<const CDllItem &>(item).Names()) {
            texts.push_back(name.View());
        }
    } else {
        for (const COptionEntry &entry : item.Attributes().Entries()) {
            texts.push_back(entry.text.View());
        }
    }
    return texts;
}

/// True if a text of the parameter file is read as an entry.
bool ReadsAs(const CItem &item, std::string_view value, std::string_view entry) {
    if (item.Code() == TItemCode::kDll) {
        return kq_base::EqualIgnoringCase(value, entry) ||
               kq_base::EqualIgnoringCase(std::string(value) + ".dll", entry);
    }
    return value == entry || (!item.Attributes().case_sensitive && kq_base::EqualIgnoringCase(value, entry));
}

std::string EntryList(const std::vector<std::string_view> &texts) {
    std::string list;
    for (std::size_t index = 0; index < std::min(texts.size(), kNamedEntries); ++index) {
        list.append(index == 0 ? "" : ", ").append(texts[index]);
    }
    return list + (texts.size() > kNamedEntries ? ", ..." : "");
}

/// Of several entries with one text the reader takes the last, so that is the one that stays after a reading.
bool EnterEntry(TCellEditor &editor, std::string_view value, std::string &reason) {
    CComboBox &box = editor.ComboBox();
    const std::vector<std::string_view> texts = EntryTexts(*editor.item);
    const std::size_t before = box.EntryCount() - texts.size();
    std::size_t labelled = 0;
    std::size_t count = 0;
    for (std::size_t number = texts.size(); number > 0; --number) {
        if (ReadsAs(*editor.item, value, texts[number - 1])) {
            return box.UserSelect(number + before);
        }
        if (box.Entry(number + before) == value) {
            labelled = number + before;
            ++count;
        }
    }
    if (count == 1) {
        return box.UserSelect(labelled);
    }
    if (count == 0 && before != 0 && (value.empty() || value == box.Entry(1))) {
        return box.UserSelect(1);
    }
    reason = "'" + std::string(value) + (count > 1 ? "' is the label of several entries" : "' is no entry of the list");
    reason += texts.empty() ? ", which is empty" : "; it has " + EntryList(texts);
    return false;
}

}  // namespace

bool EnterValue(TCellEditor &editor, std::string_view value, std::string &reason) {
    switch (editor.kind) {
        case TCellEditor::TControl::kCountBox:
            return CheckNumber(value, editor.CountBox(), reason) && editor.CountBox().UserType(value);
        case TCellEditor::TControl::kEditBox:
            return CheckText(value, reason) && editor.EditBox().UserType(value);
        case TCellEditor::TControl::kComboBox:
            return editor.ComboBox().Mode() == CComboBox::TMode::kFreeText ? EnterFreeText(editor, value, reason)
                                                                           : EnterEntry(editor, value, reason);
        default:
            return false;
    }
}

}  // namespace kq_pdt
