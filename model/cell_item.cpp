#include "model/cell_item.h"

#include "model/def_node.h"
#include "model/item_list.h"
#include "model/sheet_data.h"
#include "model/var_ref_item.h"

namespace kq_pdt {

void CCellItem::GetCell(std::uint32_t &index, kq_base::CTextBuffer &text, TCellField field, bool &disabled) {
    if (index-- != 1) {
        return;
    }
    const TItemAttributes &attributes = Attributes();
    disabled = !IsEnabled();
    text.Clear();
    switch (field) {
        case TCellField::kLabel:
            text.Append(attributes.label.View());
            break;
        case TCellField::kBubble:
            text.Append(attributes.bubble.View());
            break;
        case TCellField::kComment:
            text.Append(attributes.Comment());
            break;
        case TCellField::kValue:
            if (undefined_) {
                text.Append(NoneText().View());
            } else {
                AppendShownValue(text);
            }
            break;
    }
}

void CCellItem::SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) {
    switch (keyword) {
        case kwLabel:
            EditAttributes().label = text;
            break;
        case kwBubble:
            EditAttributes().bubble = text;
            break;
        case kwOptional:
            optional_ = true;
            undefined_ = true;
            break;
        default:
            CItem::SetAttribute(keyword, form, text, scope);
    }
}

bool CCellItem::BeginEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) {
    if (index-- != 1) {
        return false;
    }
    if (!editor) {
        editor = std::make_unique<TCellEditor>();
    }
    editor->item = this;
    return true;
}

/// Unknown values are never equal; but after one another nothing follows from another, and conditions in a circle would
/// go on and on. An edit settles it at its end.
bool CCellItem::IsUnknownStill(const TParValue &published) const {
    const CVarRefItem *id = IdVariable();
    const CVariable *variable = id != nullptr ? id->Variable() : nullptr;
    return published.kind == TParKind::pvUndefined && variable != nullptr &&
           variable->Stored().kind == TParKind::pvUndefined && SheetData() != nullptr && SheetData()->Edit() == nullptr;
}

/// An item that is switched on or off gives its variable its value, or takes it away, and its node's channels follow.
void CCellItem::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    CItem::ParameterChanged(variable, value, ok);
    const CEnableIf *condition = Attributes().enable_if.get();
    if (condition == nullptr || !condition->DependsOn(variable)) {
        return;
    }
    const TParValue published = PublishedValue();
    if (Code() != TItemCode::kDll && !IsUnknownStill(published)) {
        ok = AssignToVariable(published) && ok;
    }
    if ((Attributes().roles & ~roleReadAll) != 0 && AskedNode() != nullptr) {
        AskedNode()->FollowChannels(ok);
    }
}

TParValue CCellItem::EditedValue(const TCellEditor & /*editor*/) const { return {}; }

}  // namespace kq_pdt
