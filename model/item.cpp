#include "model/item.h"

#include "model/edit_state.h"
#include "model/item_list.h"
#include "model/key_def.h"
#include "model/section_def.h"
#include "model/sheet_data.h"
#include "model/texts.h"
#include "model/var_ref_item.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

namespace {

TChannelAttributes &ChannelAttributes(TItemAttributes &attributes) {
    if (!attributes.channel) {
        attributes.channel = std::make_unique<TChannelAttributes>();
    }
    return *attributes.channel;
}

/// One statement `ch_type` or `ch_direction` arrives in up to three parts: a variable, the text of a row, its word.
void TakeMapAttribute(TChannelAttributes &channel, bool is_type, std::uint32_t form, std::string_view text,
                      CVarScope *scope) {
    if (form == formVariable) {
        if (scope != nullptr) {
            (is_type ? channel.type_variable : channel.direction_variable) = scope->Resolve(text, false);
        }
    } else if (form == formText) {
        if (!channel.pending) {
            channel.pending = CValueMapEntry{kq_base::TText(text), 0};
        }
    } else {
        CValueMapEntry row = channel.pending.value_or(CValueMapEntry());
        row.code = form;
        (is_type ? channel.type_map : channel.direction_map).push_back(std::move(row));
        channel.pending.reset();
    }
}

}  // namespace

CItem::CItem(TItemCode code) : code_(code) {}

CItem::~CItem() = default;

const TItemAttributes &CItem::NoAttributes() {
    static const TItemAttributes none;
    return none;
}

void CItem::CreateAttributes() { attributes_ = CSharedAttributes(new TItemAttributes); }

void CItem::SetId(std::unique_ptr<CVarRefItem> variable) {
    if (!own_) {
        own_ = std::make_unique<TOwn>();
    }
    own_->id_variable = std::move(variable);
}

bool CItem::IsEnabled() const {
    const CEnableIf *condition = Attributes().enable_if.get();
    return condition == nullptr || condition->Holds();
}

void CItem::Publish() {}

bool CItem::SetValue(const TParValue & /*value*/) { return false; }

void CItem::GetValue(TParValue & /*value*/) {}

std::uint32_t CItem::GetCellCount() const { return 0; }

bool CItem::AppendText(kq_base::CTextBuffer & /*text*/) { return false; }

void CItem::GetCell(std::uint32_t & /*index*/, kq_base::CTextBuffer &text, TCellField field, bool & /*disabled*/) {
    if (field == TCellField::kComment) {
        text.Clear();
        text.Append(Attributes().Comment());
    }
}

void CItem::AppendCellText(kq_base::CTextBuffer & /*text*/, bool & /*disabled*/) {}

std::unique_ptr<CItem> CItem::Clone() {
    auto clone = std::make_unique<CItem>(code_);
    CloneBaseInto(*clone);
    return clone;
}

void CItem::CopyValue(CItem *source) {
    if (source != nullptr) {
        CopyBaseValue(*source);
    }
}

void CItem::OpenEditor(std::uint32_t & /*index*/, std::unique_ptr<TCellEditor> & /*editor*/) {}

void CItem::CloseEditor(std::unique_ptr<TCellEditor> &editor, bool /*accept*/) { editor.reset(); }

void CItem::SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) {
    TItemAttributes &attributes = EditAttributes();
    switch (keyword) {
        case kwWriteIfAll:
            if (owner_ != nullptr) {
                owner_->SetWriteIfAll();
            }
            break;
        case kwChType:
            TakeMapAttribute(ChannelAttributes(attributes), true, form, text, scope);
            attributes.roles |= roleChType;
            break;
        case kwChDirection:
            TakeMapAttribute(ChannelAttributes(attributes), false, form, text, scope);
            attributes.roles |= roleChDirection;
            break;
        case kwChFrom:
        case kwChTo:
        case kwChNumber:
            attributes.roles |= keyword == kwChFrom ? roleChFrom : keyword == kwChTo ? roleChTo : roleChNumber;
            SetAttribute(kwRangeFrom, formNumber, "1", scope);
            SetAttribute(kwRangeTo, formNumber, "2147483647", scope);
            break;
        case kwChCount:
            attributes.roles |= roleChCount;
            if (form == formNumber) {
                TChannelAttributes &channel = ChannelAttributes(attributes);
                if (kq_base::ParseDecimal(text, channel.fixed_count)) {
                    channel.fixed_keyword = kwChCount;
                }
            }
            break;
        case kwReadAll:
            attributes.roles |= roleReadAll;
            break;
        case kwId:
            if (form == formVariable && Id() == nullptr && scope != nullptr) {
                SetId(scope->Resolve(text, false));
            }
            break;
        case kwComment:
            attributes.EditRareTexts().comment = text;
            break;
        case kwNedef:
            attributes.EditRareTexts().none_text = kq_base::TText(text);
            break;
        case kwNoCaseSensitive:
            attributes.case_sensitive = false;
            break;
        default:
            break;
    }
}

void CItem::SetDefault(CDefaultValue /*value*/) {}

void CItem::SetExpression(std::uint32_t /*keyword*/, std::uint32_t /*word*/,
                          std::unique_ptr<CExpression> /*expression*/) {}

void CItem::BindVariable(CVariable &variable) {
    if (CVarRefItem *id = Id()) {
        id->BindVariable(variable);
    }
}

void CItem::CapturedValueChanged(const TParValue &value, const CVariable *variable) {
    if (CVarRefItem *id = Id()) {
        id->CapturedValueChanged(value, variable);
    }
}

bool CItem::Match(std::string_view /*text*/, std::uint32_t /*position*/, TMatchStep & /*step*/) { return false; }

bool CItem::ParseValue(std::string_view /*text*/, std::uint32_t /*first*/, std::uint32_t /*end*/) { return false; }

void CItem::ParsePiece(const TMatchPiece &piece) { ParseValue(piece.text, piece.first, piece.end); }

void CItem::TakePiece(const TMatchPiece &piece) { ParsePiece(piece); }

void CItem::GiveBack() {
    CVarRefItem *id = Id();
    CParSheetData *data = SheetData();
    if (id == nullptr || data == nullptr) {
        return;
    }
    TEditState *edit = data->Edit();
    if (CVariable *variable = id->Variable()) {
        if (edit != nullptr) {
            edit->Touch(*variable);
        } else if (data->IsReadingPar()) {
            data->Assignments().NoteLostSource(*variable);
        }
    }
    CSectionDef *dependent = id->Dependent();
    if (dependent == nullptr) {
        return;
    }
    id->SetDependent(nullptr);
    if (edit != nullptr) {
        edit->orphans.push_back(dependent);
    } else {
        data->Instances().Release(*dependent);
    }
}

namespace {

/// Calls use() with only the scopes of an item's nodes in force.
template <class TUse>
auto InScopesOf(const CItem &item, const TUse &use) {
    CDefNode *node = item.Owner()->Node();
    const CScopeIsolation isolation(node->SheetData()->RootScope());
    const CScopeGuard section(node->Has(nfKey) ? static_cast<CKeyDef *>(node)->Section() : nullptr);
    const CScopeGuard scope(node);
    return use();
}

}  // namespace

bool CItem::IsWritten() {
    return InScopesOf(*this, [this] { return !undefined_ && IsEnabled(); });
}

TParValue CItem::ValueInScopes() {
    return InScopesOf(*this, [this] { return PublishedValue(); });
}

void CItem::PublishWithoutText() {
    CParSheetData *data = SheetData();
    if (Id() != nullptr && data != nullptr && (undefined_ || !IsEnabled()) &&
        data->References().Dependent(Id()->Name()) == nullptr) {
        AssignToVariable(PublishedValue());
    }
}

CSectionDef *CItem::Dependent() const { return Id() != nullptr ? Id()->Dependent() : nullptr; }

void CItem::SetDependent(CSectionDef *section) { Id()->SetDependent(section); }

void CItem::Done() {
    if (own_) {
        own_->id_variable.reset();
    }
}

void CItem::CloneBaseInto(CItem &clone) {
    clone.optional_ = optional_;
    clone.undefined_ = undefined_;
    clone.attributes_ = attributes_;
    if (CVarRefItem *id = Id()) {
        clone.SetId(id->CloneReference());
    }
    clone.CopyNoneText(*this);
}

/// Most items have the same as their definition.
void CItem::CopyNoneText(const CItem &source) {
    if (&source.NoneText() != &NoneText() && !(source.NoneText() == NoneText())) {
        if (!own_) {
            own_ = std::make_unique<TOwn>();
        }
        own_->none_text = source.NoneText();
    }
}

void CItem::CopyBaseValue(const CItem &source) {
    CopyNoneText(source);
    optional_ = source.optional_;
    undefined_ = source.undefined_;
}

void CItem::PublishValue(const TParValue &value) {
    if (Id() != nullptr) {
        const bool unknown = undefined_ || !IsEnabled();
        AssignToVariable(unknown ? TParValue::Undefined() : value);
    }
}

bool CItem::AssignToVariable(const TParValue &value) {
    bool ok = true;
    CVarRefItem *id = Id();
    if (id == nullptr) {
        return ok;
    }
    CParSheetData *data = SheetData();
    if (data != nullptr && data->Edit() != nullptr) {
        data->Assignments().Publish(*this, *id, value, ok);
    } else {
        id->Assign(value, ok);
    }
    return ok;
}

void CItem::AdoptDependent(const CItem &source, const TParValue &value) {
    CVarRefItem *id = Id();
    if (id == nullptr || source.Id() == nullptr) {
        return;
    }
    if (!id->AdoptDependent(*source.Id())) {
        // The match created a section of its own, of which no text was read: the item's section takes the value.
        CSectionDef *created = source.Dependent();
        if (created != nullptr && created != Dependent() && !created->WasTaken()) {
            created->SheetData()->Instances().Release(*created);
        }
        return;
    }
    if (CVariable *variable = id->Variable()) {
        variable->Replace(value);
    }
}

}  // namespace kq_pdt
