#pragma once

#include <string>

#include "configurator/edit_place.h"
#include "model/sheet_data.h"
#include "model/sheet_edit.h"

namespace kq_pdt {

/// Finds what the names of a place mean. Each look-up gives none, with the reason in a text, if nothing fits the name,
/// or more than one thing does and the name has no number.
class CPlaceFinder {
public:
    explicit CPlaceFinder(const CParSheetData &data) : data_(data) {}

    /// The instance that shows a name.
    CSectionDef *FindSection(const TPlaceName &name, std::string &reason) const;
    /// The key of an instance that shows a name.
    static CKeyDef *FindKey(CSectionDef &section, const TPlaceName &name, std::string &reason);

    /// The definition that a name means for adding: by the text that a new section would show, or else by the constant
    /// with which its name begins, or else by the name of an instance. None, too, if it can't be added.
    CSectionDef *FindAddableSection(const CSheetEdit &edit, const TPlaceName &name, std::string &reason) const;
    /// Likewise the definition of a key of an instance, or else by the key's label.
    static const CKeyDef *FindAddableKey(CSectionDef &section, const TPlaceName &name, std::string &reason);

    /// The place of an instance and of a key, as ParseEditPlace reads it.
    std::string PlaceOf(CSectionDef &section) const;
    std::string PlaceOf(CKeyDef &key) const;

private:
    std::vector<CSectionDef *> SectionsShowing(std::string_view text) const;

    const CParSheetData &data_;
};

}  // namespace kq_pdt
