#pragma once

#include <string>
#include <string_view>

#include "configurator/place_finder.h"

namespace kq_pdt {

/// Edits of a configuration at places that people name (configurator/edit_place.h), carried out as the sheet carries
/// them out. Each is whole or not at all, and says why it wasn't carried out.
class CPlaceEdit {
public:
    explicit CPlaceEdit(CParSheetData &data) : finder_(data), edit_(data) {}

    bool Set(std::string_view place, std::string_view value, std::string &reason);
    /// added becomes the place of the new section or line.
    bool Add(std::string_view place, std::string &added, std::string &reason);
    bool Remove(std::string_view place, std::string &reason);

private:
    bool AddSection(const TPlaceName &name, std::string &added, std::string &reason);
    bool AddKey(CSectionDef &section, const TPlaceName &name, std::string &added, std::string &reason);
    bool RemoveSection(CSectionDef &section, std::string &reason);
    bool RemoveKey(CKeyDef &key, std::string &reason);
    std::string RefusalText() const;

    CPlaceFinder finder_;
    CSheetEdit edit_;
};

}  // namespace kq_pdt
