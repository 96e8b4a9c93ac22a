#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/key_def.h"
#include "model/name_index.h"
#include "model/var_ref_item.h"

namespace kq_pdt {

struct TSectionUse;

/// A section: its name and its keys. An instance holds first the clones of the definition's keys without `multiple`, in
/// the template's order, then the keys that reading or the sheet added, in the order in which they were added.
class CSectionDef final : public CDefNode {
public:
    explicit CSectionDef(CParSheetData *sheet_data);
    ~CSectionDef() override;

    /// A copy; deep with all keys that aren't `multiple`.
    std::unique_ptr<CSectionDef> Clone(bool deep);
    CKeyDef &AddKey(std::unique_ptr<CKeyDef> key);
    /// Looks at the definition's keys: how many columns, and are they alike. Nothing without a definition.
    void ComputeLayout();
    std::uint32_t GetColumns();
    bool IsUniform() const { return uniform_; }
    bool HasMultipleKeys() const { return has_multiple_keys_; }
    /// Publishes all items, name first.
    void PublishTree();
    void ClearKeys();
    /// The section was released and lives on for a while: no reference and no table of the sheet leads to it any more.
    void Retire();
    void WriteSection(CTextOut &out);

    /// The same questions to the section's name alone.
    void GetNameChannelAttr(std::uint32_t keyword, std::uint32_t &value);
    bool SetNameChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched);

    bool CommitChannels() override;
    void ReconsiderChannels() override;
    void CapturedValueChanged(const TParValue &value, const CVariable *variable) override;
    void BindVariable(CVariable &variable) override;
    void GetChannelAttr(std::uint32_t keyword, std::uint32_t &value) override;
    bool SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched) override;
    void RegisterChannels() override;
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) override;
    bool HasUndefinedChannelNumber() const override;
    void GiveBack() override;
    void Done() override;
    /// Lets those parts follow a changed variable that have to do with it.
    void FollowVariable(const TSectionUse &use, const CVariable *variable, const TParValue &value, bool &ok);
    /// Takes a key out, gives back what it holds, and keeps it alive as long as the edit under way may put it back.
    void RemoveKey(CKeyDef &key);
    /// The value of a variable for which the section was created, as its name shows it; pvNone if it doesn't.
    TParValue BoundValue(std::string_view variable) const;

    const std::vector<std::unique_ptr<CKeyDef>> &Keys() const { return keys_; }
    /// The names of the keys, each with its key.
    const CNameIndex &KeyNames();
    /// The clone of a definition's key that an instance has from the beginning, or none.
    CKeyDef *CloneOf(const CKeyDef &key) const;
    /// The position among the keys of one of them.
    std::size_t IndexOf(CKeyDef &key) const;
    /// `depend_on`: the variable whose values create instances; in definitions only.
    const CVarRefItem *DependOn() const { return depend_on_.get(); }
    void SetDependOn(std::unique_ptr<CVarRefItem> variable) { depend_on_ = std::move(variable); }
    /// In an instance, what it was cloned from; absent in a definition.
    const CSectionDef *Definition() const { return definition_; }
    CSectionDef *Definition() { return definition_; }
    /// A handle that references keep; it expires when the section is released.
    std::weak_ptr<CSectionDef *> Handle();

    /// True once the reader has read a text into this instance.
    bool WasTaken() const { return taken_; }
    void SetTaken() { taken_ = true; }
    /// Numbers the instances in the order in which they were created, and the definitions in that in which they are
    /// matched.
    std::uint32_t Serial() const { return serial_; }
    void SetSerial(std::uint32_t serial) { serial_ = serial; }

private:
    void TellRow(std::size_t index, bool inserted);

    std::vector<std::unique_ptr<CKeyDef>> keys_;
    std::unique_ptr<CNameIndex> key_names_;
    std::unique_ptr<CVarRefItem> depend_on_;
    bool uniform_ = false;
    bool has_multiple_keys_ = false;
    std::uint32_t columns_ = kNoNumber;
    CSectionDef *definition_ = nullptr;
    std::shared_ptr<CSectionDef *> handle_;
    bool taken_ = false;
    std::uint32_t serial_ = 0;
};

using CSectionList = std::vector<std::unique_ptr<CSectionDef>>;

}  // namespace kq_pdt
