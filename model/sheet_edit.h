#pragma once

#include <cstdint>
#include <memory>

#include "model/cell_editor.h"

namespace kq_pdt {

class CKeyDef;
class CParSheetData;
class CSectionDef;

/// Why an edit wasn't taken.
enum class TRefusal : std::uint32_t {
    kNone,        ///< it was taken
    kNoEditor,    ///< there is no such cell, or it can't be edited now
    kCancelled,   ///< the person left the editor without taking its value
    kBadChannel,  ///< a channel number or count won't do; the user has seen the box
    kSilent,      ///< anything else; the status line says so
    kGroup,       ///< a channel group of the new node can't be defined; an error went to the message list
};

/// What a person does to the model, as the sheet carries it out: committing a cell, adding and removing sections and
/// keys. An edit is whole or not at all: what is refused leaves values, variables, sections and the table of channels
/// as they were. After an edit that was taken, the parameter file and the driver map file that are written read back
/// into the same model.
class CSheetEdit {
public:
    explicit CSheetEdit(CParSheetData &data);
    ~CSheetEdit();  ///< an open editor ends without taking its value
    CSheetEdit(const CSheetEdit &) = delete;
    CSheetEdit &operator=(const CSheetEdit &) = delete;

    /// Opens the editor of a cell and ends the one that is open without taking its value. key null: a cell of the
    /// section's name. Cells count from 1 over name and values of the node; a key's label doesn't count. None if there
    /// is no such cell or it can't be edited now. The editor lives until it is closed or what it edits is released.
    TCellEditor *OpenCell(CSectionDef &section, CKeyDef *key, std::uint32_t cell);
    /// The open editor, or none.
    TCellEditor *Editor() const;
    /// Ends the open editor; with accept its value is taken. True if it was taken, also if it is the old one.
    bool CloseCell(bool accept);

    /// A new instance of a definition section at the end; none if it was refused, or if what it publishes takes its
    /// definition away.
    CSectionDef *AddSection(CSectionDef &definition);
    /// A new key at the end of a section, from a key of the section's definition that is `multiple`; none likewise.
    CKeyDef *AddKey(CSectionDef &section, const CKeyDef &definition);
    /// Removes an instance; false, with nothing changed, if it can't be removed or a refusal followed.
    bool RemoveSection(CSectionDef &section);
    bool RemoveKey(CKeyDef &key);

    /// Addable is a definition that is `multiple` or has no instance, has a name, and no `depend_on`.
    bool CanAddSection(const CSectionDef &definition) const;
    /// True for an instance of a definition that isn't `required`, unless it depends on a value that is still there.
    bool CanRemoveSection(const CSectionDef &section) const;
    /// True for keys of a `multiple` definition.
    bool CanRemoveKey(const CKeyDef &key) const;

    /// What became of the last edit.
    TRefusal Refusal() const { return refusal_; }

private:
    bool Refuse(TRefusal reason);
    /// Ends the edit under way and remembers what became of it.
    bool End();
    /// Publishes a new node and commits its channels; false, with the edit refused, if that can't be.
    template <class TNode>
    bool Establish(TNode &node);

    CParSheetData &data_;
    TRefusal refusal_ = TRefusal::kNone;
};

}  // namespace kq_pdt
