#include "model/sheet_edit.h"

#include "model/edit_state.h"
#include "model/sheet_data.h"
#include "model/texts.h"

namespace kq_pdt {

CSheetEdit::CSheetEdit(CParSheetData &data) : data_(data) {}

CSheetEdit::~CSheetEdit() { data_.OpenEditor().reset(); }

bool CSheetEdit::Refuse(TRefusal reason) {
    refusal_ = reason;
    return false;
}

bool CSheetEdit::End() {
    bool bad_channel = false;
    const bool taken = data_.EndEdit(bad_channel);
    if (taken) {
        refusal_ = TRefusal::kNone;
    } else if (refusal_ != TRefusal::kGroup) {
        refusal_ = bad_channel ? TRefusal::kBadChannel : TRefusal::kSilent;
    }
    return taken;
}

TCellEditor *CSheetEdit::OpenCell(CSectionDef &section, CKeyDef *key, std::uint32_t cell) {
    std::unique_ptr<TCellEditor> &editor = data_.OpenEditor();
    editor.reset();
    if (cell == 0) {
        return nullptr;
    }
    const CScopeGuard section_scope(&section);
    if (key != nullptr) {
        const CScopeGuard key_scope(key);
        key->OpenEditor(cell, editor);
    } else if (section.Names() != nullptr) {
        section.Names()->Items().OpenEditor(cell, editor);
    }
    if (!editor || !editor->control) {
        editor.reset();
        return nullptr;
    }
    editor->section = &section;
    editor->key = key;
    return editor.get();
}

TCellEditor *CSheetEdit::Editor() const { return data_.OpenEditor().get(); }

bool CSheetEdit::CloseCell(bool accept) {
    std::unique_ptr<TCellEditor> editor = std::move(data_.OpenEditor());
    if (!editor) {
        return Refuse(TRefusal::kNoEditor);
    }
    if (!accept) {
        return Refuse(TRefusal::kCancelled);
    }
    refusal_ = TRefusal::kNone;
    const CInstances::CHold hold(data_.Instances());
    data_.BeginEdit();
    {
        const CScopeGuard section_scope(editor->section);
        const CScopeGuard key_scope(editor->key);
        CItem *item = editor->item;
        item->CloseEditor(editor, true);
        item->FollowWords();
    }
    return End();
}

template <class TNode>
bool CSheetEdit::Establish(TNode &node) {
    node.PublishTree();
    if (data_.Edit()->refused) {
        data_.Refuse(true);
        return false;
    }
    if (!node.IsReleased() && !node.CommitChannels()) {
        data_.Edit()->bad_group = !data_.Edit()->bad_channel;
        refusal_ = data_.Edit()->bad_group ? TRefusal::kGroup : TRefusal::kBadChannel;
        data_.Refuse();
        return false;
    }
    return true;
}

CSectionDef *CSheetEdit::AddSection(CSectionDef &definition) {
    if (!CanAddSection(definition)) {
        Refuse(TRefusal::kNoEditor);
        return nullptr;
    }
    refusal_ = TRefusal::kNone;
    const CInstances::CHold hold(data_.Instances());
    data_.BeginEdit();
    CSectionDef &section = data_.Instances().Append(definition.Clone(true));
    Establish(section);
    if (section.IsReleased()) {
        data_.Refuse();
    }
    data_.Post(cmRebuildSheets);
    if (End()) {
        return &section;
    }
    if (refusal_ == TRefusal::kGroup) {
        data_.ReportError(texts::kCannotCreate);
    }
    return nullptr;
}

CKeyDef *CSheetEdit::AddKey(CSectionDef &section, const CKeyDef &definition) {
    if (!definition.Has(nfMultiple)) {
        Refuse(TRefusal::kNoEditor);
        return nullptr;
    }
    refusal_ = TRefusal::kNone;
    const CInstances::CHold hold(data_.Instances());
    data_.BeginEdit();
    CKeyDef &key = section.AddKey(definition.Clone(true, nullptr));
    {
        const CScopeGuard scope(&section);
        Establish(key);
    }
    if (section.IsReleased()) {
        data_.Refuse();
    }
    data_.Post(cmRebuildSheets);
    if (End()) {
        return &key;
    }
    if (refusal_ == TRefusal::kGroup) {
        data_.ReportError(texts::kCannotCreate);
    }
    return nullptr;
}

bool CSheetEdit::RemoveSection(CSectionDef &section) {
    if (!CanRemoveSection(section)) {
        return Refuse(TRefusal::kNoEditor);
    }
    refusal_ = TRefusal::kNone;
    const CInstances::CHold hold(data_.Instances());
    data_.BeginEdit();
    data_.Edit()->removes = true;
    data_.Instances().Release(section);
    return End();
}

bool CSheetEdit::RemoveKey(CKeyDef &key) {
    if (!CanRemoveKey(key)) {
        return Refuse(TRefusal::kNoEditor);
    }
    refusal_ = TRefusal::kNone;
    const CInstances::CHold hold(data_.Instances());
    data_.BeginEdit();
    data_.Edit()->removes = true;
    if (key.RowId() != 0) {
        data_.Post(cmRebuildTable, key.RowId());
    }
    key.Section()->RemoveKey(key);
    data_.Post(cmRebuildSheets);
    return End();
}

bool CSheetEdit::CanAddSection(const CSectionDef &definition) const {
    return definition.Names() != nullptr && definition.DependOn() == nullptr &&
           (definition.Has(nfMultiple) || !data_.Instances().Has(definition));
}

bool CSheetEdit::CanRemoveSection(const CSectionDef &section) const {
    const CSectionDef *definition = section.Definition();
    return definition != nullptr && !definition->Has(nfRequired) && !data_.Assignments().HasSource(section);
}

bool CSheetEdit::CanRemoveKey(const CKeyDef &key) const {
    return key.Definition() != nullptr && key.Definition()->Has(nfMultiple) && key.Section() != nullptr;
}

}  // namespace kq_pdt
