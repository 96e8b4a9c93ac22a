#include "configurator/place_edit.h"

#include "configurator/cell_input.h"
#include "model/texts.h"

namespace kq_pdt {

namespace {

bool ReadPlace(std::string_view text, TEditPlace &place, std::string &reason) {
    const bool read = ParseEditPlace(text, place);
    if (!read) {
        reason = "the numbers of a place count from 1";
    }
    return read;
}

/// A place for adding or removing names a section or a key.
bool ReadNodePlace(std::string_view text, TEditPlace &place, std::string &reason) {
    if (!ReadPlace(text, place, reason)) {
        return false;
    }
    if (place.cell != TEditPlace::TCell::kNone) {
        reason = "this is one cell; only whole sections and lines are added and removed";
    }
    return place.cell == TEditPlace::TCell::kNone;
}

std::uint32_t NameCells(const CDefNode &node) {
    return node.Names() != nullptr ? node.Names()->Items().CountCells() : 0;
}

/// The number of a cell as the sheet counts it, over name and values. False, with the reason, if there is no such cell.
bool FindCell(const TEditPlace &place, CSectionDef &section, CKeyDef *key, std::uint32_t &cell, std::string &reason) {
    const bool of_name = key == nullptr || place.cell == TEditPlace::TCell::kName;
    const std::uint32_t name_cells = key == nullptr ? NameCells(section) : NameCells(*key);
    const std::uint32_t count = of_name ? name_cells : key->GetCellCount() - 1 - name_cells;
    const std::uint32_t number = place.cell == TEditPlace::TCell::kNone ? 1 : place.number;
    cell = of_name ? number : name_cells + number;
    if (number <= count) {
        return true;
    }
    const std::string counted = count == 0 ? "nothing" : count == 1 ? "one value" : std::to_string(count) + " values";
    reason = (of_name ? "the name holds " : "the line holds ") + counted + " to be edited";
    return false;
}

}  // namespace

bool CPlaceEdit::Set(std::string_view place, std::string_view value, std::string &reason) {
    TEditPlace read;
    if (!ReadPlace(place, read, reason)) {
        return false;
    }
    CSectionDef *section = finder_.FindSection(read.section, reason);
    if (section == nullptr) {
        return false;
    }
    CKeyDef *key = nullptr;
    if (read.key && (key = CPlaceFinder::FindKey(*section, *read.key, reason)) == nullptr) {
        return false;
    }
    std::uint32_t cell = 0;
    if (!FindCell(read, *section, key, cell, reason)) {
        return false;
    }
    TCellEditor *editor = edit_.OpenCell(*section, key, cell);
    if (editor == nullptr) {
        reason = "the value is disabled by its condition";
        return false;
    }
    if (!EnterValue(*editor, value, reason)) {
        edit_.CloseCell(false);
        return false;
    }
    const bool taken = edit_.CloseCell(true);
    if (!taken) {
        reason = RefusalText();
    }
    return taken;
}

bool CPlaceEdit::Add(std::string_view place, std::string &added, std::string &reason) {
    TEditPlace read;
    if (!ReadNodePlace(place, read, reason)) {
        return false;
    }
    if (!read.key) {
        return AddSection(read.section, added, reason);
    }
    CSectionDef *section = finder_.FindSection(read.section, reason);
    return section != nullptr && AddKey(*section, *read.key, added, reason);
}

bool CPlaceEdit::AddSection(const TPlaceName &name, std::string &added, std::string &reason) {
    CSectionDef *definition = finder_.FindAddableSection(edit_, name, reason);
    if (definition == nullptr) {
        return false;
    }
    CSectionDef *section = edit_.AddSection(*definition);
    if (section == nullptr) {
        reason = RefusalText();
        return false;
    }
    added = finder_.PlaceOf(*section);
    return true;
}

bool CPlaceEdit::AddKey(CSectionDef &section, const TPlaceName &name, std::string &added, std::string &reason) {
    const CKeyDef *definition = CPlaceFinder::FindAddableKey(section, name, reason);
    if (definition == nullptr) {
        return false;
    }
    CKeyDef *key = edit_.AddKey(section, *definition);
    if (key == nullptr) {
        reason = RefusalText();
        return false;
    }
    added = finder_.PlaceOf(*key);
    return true;
}

bool CPlaceEdit::Remove(std::string_view place, std::string &reason) {
    TEditPlace read;
    if (!ReadNodePlace(place, read, reason)) {
        return false;
    }
    CSectionDef *section = finder_.FindSection(read.section, reason);
    if (section == nullptr) {
        return false;
    }
    if (!read.key) {
        return RemoveSection(*section, reason);
    }
    CKeyDef *key = CPlaceFinder::FindKey(*section, *read.key, reason);
    return key != nullptr && RemoveKey(*key, reason);
}

bool CPlaceEdit::RemoveSection(CSectionDef &section, std::string &reason) {
    if (!edit_.CanRemoveSection(section)) {
        const CSectionDef *definition = section.Definition();
        reason = definition != nullptr && definition->Has(nfRequired)
                     ? "the template requires the section"
                     : "the section comes with a value that is still there";
        return false;
    }
    const bool removed = edit_.RemoveSection(section);
    if (!removed) {
        reason = RefusalText();
    }
    return removed;
}

bool CPlaceEdit::RemoveKey(CKeyDef &key, std::string &reason) {
    if (!edit_.CanRemoveKey(key)) {
        reason = key.Definition() != nullptr ? "the section always has this key" : "the template doesn't know the key";
        return false;
    }
    const bool removed = edit_.RemoveKey(key);
    if (!removed) {
        reason = RefusalText();
    }
    return removed;
}

std::string CPlaceEdit::RefusalText() const {
    switch (edit_.Refusal()) {
        case TRefusal::kBadChannel:
            return std::string(texts::kBadChannel);
        case TRefusal::kGroup:
            return std::string(texts::kCannotCreate);
        default:
            return std::string(texts::kCannotChange);
    }
}

}  // namespace kq_pdt
