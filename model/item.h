#pragma once

#include <cassert>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "model/cell_editor.h"
#include "model/item_attributes.h"
#include "platform/base/par_value.h"
#include "platform/base/pooled.h"
#include "platform/base/text_buffer.h"
#include "template/language/keywords.h"

namespace kq_pdt {

class CDefNode;
class CItemSeq;
class CSectionDef;
class CParSheetData;
class CVarRefItem;
class CVarScope;
class CVariable;

/// What kind of value item it is.
enum class TItemCode : std::uint8_t {
    kPlain = 1,  ///< no value of its own; references to variables keep this code
    kConst = 3,
    kNumber = 5,
    kString = 6,
    kDll = 7,
    kOptions = 8,
    kChannelsGroup = 9,
};

/// How an attribute's value was written in the template. From 100 up it is the code of a keyword.
enum TAttributeForm : std::uint32_t { formVariable = 1, formText = 2, formNumber = 3 };

/// What of a cell is asked for.
enum class TCellField : std::uint32_t { kValue = 1, kLabel = 2, kBubble = 3, kComment = 4 };

/// One step of the pattern matcher.
struct TMatchStep {
    std::uint32_t position = 0;  ///< behind what was accepted
    bool complete = false;       ///< the item takes nothing more
    bool may_be_empty = false;   ///< the item may be passed over without a character
};

/// What a match cut out of its text for one item.
struct TMatchPiece {
    std::string_view text;
    std::uint32_t first = 0;
    std::uint32_t end = 0;
    bool ends_text = false;     ///< nothing was taken behind it
    bool ends_pattern = false;  ///< the item is the last of its pattern
};

/// One element of a name or of a `par` line: it takes attributes from the compiler, recognises itself in the text of a
/// parameter file, keeps a value, prints it, shows it in cells of the sheet, edits it there, and hands it on to a
/// variable. This base has no value and answers false, nothing or 0.
/// GetChannelAttr, SetChannelAttr, ParameterChanged and the questions to the node are in item_channels.cpp, the rest in
/// item.cpp.
class CItem : public kq_base::CPooled {
public:
    explicit CItem(TItemCode code);
    virtual ~CItem();
    CItem(const CItem &) = delete;
    CItem &operator=(const CItem &) = delete;

    /// Applies the default and hands the value to the item's variable.
    virtual void Publish();
    /// Answers a question for a channel attribute (`ch_from`, `ch_type`, ...); false if this item doesn't.
    virtual bool GetChannelAttr(std::uint32_t keyword, std::uint32_t &value);
    /// Stores a value given as a record; false if the item can't hold it.
    virtual bool SetValue(const TParValue &value);
    /// Stores a channel attribute; true if the item took the value. A channel's number has to be in the item's range.
    /// matched becomes true if this item is one for the attribute.
    virtual bool SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched);
    /// The value as a record; untouched where an item has none to give.
    virtual void GetValue(TParValue &value);
    virtual std::uint32_t GetCellCount() const;
    /// Appends what a parameter file holds for the value; false if nothing is to be written.
    virtual bool AppendText(kq_base::CTextBuffer &text);
    /// Gives one field of a cell. Index 1 means this item's cell, and index becomes 0; any other index counts down by
    /// the cells of this item.
    virtual void GetCell(std::uint32_t &index, kq_base::CTextBuffer &text, TCellField field, bool &disabled);
    /// The text of an item without a cell, for names that consist of such items alone.
    virtual void AppendCellText(kq_base::CTextBuffer &text, bool &disabled);
    /// A copy with its own value, unpublished. A number outside its range is pulled into it first, in the source too.
    virtual std::unique_ptr<CItem> Clone();
    /// Takes over the value of another item; one of another kind changes nothing.
    virtual void CopyValue(CItem *source);
    /// Opens the editor of the cell at index, counted as in GetCell. The editor's control stays absent if the cell
    /// can't be edited now.
    virtual void OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor);
    /// Takes the value from the editor, if accept and if channels and variable let it, and ends the editor. To be
    /// called inside the scopes of the item's nodes, which keep the item standing whatever follows from its new value.
    virtual void CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept);
    /// Takes an attribute with a literal from the compiler.
    virtual void SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope);
    /// Takes a default from the compiler.
    virtual void SetDefault(CDefaultValue value);
    /// Takes an attribute with an expression; word is the keyword behind the expression, or 0.
    virtual void SetExpression(std::uint32_t keyword, std::uint32_t word, std::unique_ptr<CExpression> expression);
    virtual void BindVariable(CVariable &variable);
    virtual void CapturedValueChanged(const TParValue &value, const CVariable *variable);
    /// One step of matching at a position of the text; false if the item doesn't accept what stands there.
    virtual bool Match(std::string_view text, std::uint32_t position, TMatchStep &step);
    /// Takes characters, a clone takes its piece, and an item itself takes its piece: see CMatcher.
    virtual bool ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end);
    virtual void ParsePiece(const TMatchPiece &piece);
    virtual void TakePiece(const TMatchPiece &piece);
    /// A variable changed. ok becomes false if what follows from that can't be.
    virtual void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok);
    /// Gives back what others can see of the item: the section that depends on it, the module that it chose. An edit
    /// can take that back. To be called inside the scopes of the item's nodes.
    virtual void GiveBack();
    /// Releases what the item owns.
    virtual void Done();

    /// The line that was read has no text for the item. If it can't have one, being undefined or disabled, its variable
    /// is told so that what follows in the file sees it; not where that could create a section before the end.
    void PublishWithoutText();
    /// The value of a name came from a text, be it through a clone: no default replaces it, and the variable has it. To
    /// be called inside the scopes of the item's nodes.
    virtual void CountAsGiven() {}
    /// Is the number one that a person may give the item?
    virtual bool IsInRange(std::uint32_t /*number*/) const { return true; }
    /// Does what Clone does to the item that is cloned.
    virtual void ForceIntoRange() {}

    TItemCode Code() const { return code_; }
    const TItemAttributes &Attributes() const {
        return attributes_.Get() != nullptr ? *attributes_.Get() : NoAttributes();
    }
    /// The attributes for the compiler to fill; only as long as no clone shares them.
    TItemAttributes &EditAttributes() {
        if (attributes_.Get() == nullptr) {
            CreateAttributes();
        }
        assert(attributes_.Get()->owners == 1);
        return *attributes_.Get();
    }
    bool HasRole(TRole role) const { return (Attributes().roles & role) != 0; }
    bool IsOptional() const { return optional_; }
    bool IsUndefined() const { return undefined_; }
    /// True if a reading of the written file leaves the item without a value: a disabled one isn't written.
    bool IsUnknown() const { return IsEnabled() ? undefined_ : optional_; }
    /// Does the parameter file hold the value? Takes care of the scopes itself.
    bool IsWritten();
    /// What the item's variable gets from it. Takes care of the scopes itself.
    TParValue ValueInScopes();
    /// The section that the item's reference created, or none.
    CSectionDef *Dependent() const;
    void SetDependent(CSectionDef *section);
    /// After an edit: words of channels that the item's value picks follow it.
    bool KeepsAnyNumber() const;
    void FollowWords();
    /// What the cell shows while the value is undefined.
    const kq_base::TText &NoneText() const {
        return own_ && own_->none_text ? *own_->none_text : Attributes().NoneText();
    }
    const CVarRefItem *IdVariable() const { return own_ ? own_->id_variable.get() : nullptr; }
    /// True without a condition or while it holds.
    bool IsEnabled() const;
    CItemSeq *Owner() const { return owner_; }
    void SetOwner(CItemSeq *owner) { owner_ = owner; }

protected:
    /// Copies what every kind copies into a clone.
    void CloneBaseInto(CItem &clone);
    /// The part of CopyValue that every kind has.
    void CopyBaseValue(const CItem &source);
    /// What the item's variable gets from it, inside the scopes of the item's nodes.
    virtual TParValue PublishedValue() const { return TParValue::Undefined(); }
    /// The value that a reading leaves in an item that isn't written.
    virtual void GetInitialValue(TParValue & /*value*/) const {}
    /// Hands a value to the item's variable, as unknown while the item is disabled or undefined.
    void PublishValue(const TParValue &value);
    /// Hands a value to the item's variable as it is; true if it was taken or there is no variable.
    bool AssignToVariable(const TParValue &value);
    /// Lets the item's reference go on with the section that the source's reference brought to life, if it has none of
    /// its own, and puts the value into the variable without setting anything off.
    void AdoptDependent(const CItem &source, const TParValue &value);
    /// The sheet data of the item's node; none outside any node.
    CParSheetData *SheetData() const;
    /// The node that answers the item's questions about channels, none before the item was published.
    CDefNode *AskedNode() const;
    /// True once the node that stands for channels has registered or made its block, or given up.
    bool NodeChannelsDone() const;
    /// The answer of the node to a channel attribute; 0xFFFFFFFF if the node doesn't stand for channels.
    std::uint32_t AskNode(std::uint32_t keyword) const;
    /// Changes a parameter of a range through the sheet data, which shows a refusal to the user.
    bool ChangeChannels(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                        const TParValue &new_value);

private:
    /// What few items have and clones don't share.
    struct TOwn : kq_base::CPooled {
        std::unique_ptr<CVarRefItem> id_variable;
        std::optional<kq_base::TText> none_text;  ///< one taken over from another item
    };

    static const TItemAttributes &NoAttributes();
    void CreateAttributes();
    CVarRefItem *Id() const { return own_ ? own_->id_variable.get() : nullptr; }
    void SetId(std::unique_ptr<CVarRefItem> variable);
    void CopyNoneText(const CItem &source);

    CItemSeq *owner_ = nullptr;
    std::unique_ptr<TOwn> own_;
    CSharedAttributes attributes_;
    TItemCode code_;

protected:
    // After the rest, so that the fields of a derived class fill the room after them.
    bool optional_ = false;
    bool undefined_ = false;  ///< there is no value at present
};

}  // namespace kq_pdt
