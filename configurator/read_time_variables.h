#pragma once

#include <vector>

#include "model/section_def.h"

namespace kq_pdt {

struct TVariableUses;

/// Gives the variables that decide how the values of a row are read the values that they have when a reading gets to
/// it: what comes later in the file hasn't published yet. For the length of a block, inside the scopes of the row;
/// nothing follows from it, and afterwards they have their own values again.
///
/// To find who published last before the row, rows before it are looked at, kMostRows at most; if none of them did,
/// the variable keeps its present value.
class CReadTimeVariables {
public:
    static constexpr std::size_t kMostRows = 200;

    CReadTimeVariables(CSectionDef &section, CKeyDef &key);
    ~CReadTimeVariables();
    CReadTimeVariables(const CReadTimeVariables &) = delete;
    CReadTimeVariables &operator=(const CReadTimeVariables &) = delete;

    /// The items of a value were read.
    void Publish(const CItemSeq &items);

private:
    struct TEntry {
        CVariable *variable;
        TParValue present;
    };

    void Collect(const CItemSeq &items);
    void Add(std::string_view name);
    void PublishName();
    bool FindBefore(const CVariable &variable, TParValue &value);
    CItem *FindInRows(const CVariable &variable, const TVariableUses &uses, bool &given_up);
    TParValue InitialValue(const CVariable &variable) const;

    CSectionDef &section_;
    CKeyDef &key_;
    std::vector<TEntry> entries_;
};

}  // namespace kq_pdt
