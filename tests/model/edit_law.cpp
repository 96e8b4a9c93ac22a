#include "tests/model/edit_law.h"

#include <algorithm>

#include "tests/model/edit_law_state.h"

using kq_pdt::CKeyDef;
using kq_pdt::CSectionDef;
using kq_pdt::TCellEditor;
using kq_pdt::TRefusal;

namespace {

/// The node of a name, by its number among equals; null without it.
template <class TNodes>
auto Find(const TNodes &nodes, const std::string &name, std::uint32_t number, CSectionDef *section = nullptr) {
    const auto found = std::find_if(nodes.begin(), nodes.end(),
                                    [&](const auto &node) { return NameOf(*node, section) == name && --number == 0; });
    return found == nodes.end() ? nullptr : found->get();
}

/// A reading takes a block that encloses one defined before it, and the driver map that is written repeats channels.
bool DefinesTwice(const kq_pdt::CChannelRangeTable &ranges) {
    std::uint64_t free = 0;
    kq_pdt::CChannelRange range;
    bool twice = false;
    for (std::uint32_t row = 0; ranges.GetRow(row, range); ++row) {
        twice = twice || (range.defined && range.first < free);
        free = range.defined ? std::uint64_t{range.last} + 1 : free;
    }
    return twice;
}

}  // namespace

CLawRun::CLawRun(CModuleDirectory &directory, const TCase &start) : directory_(directory), pdt_(start.pdt) {
    directory_.Hold(pdt_.modules);
    readable_ = model_.Translate(pdt_.pdt, start.par, start.dmf) && model_.boxes.empty() &&
                std::all_of(model_.Messages().Rows().begin(), model_.Messages().Rows().end(),
                            [&](const auto &row) {
                                return start.par.empty() && row.text.View().starts_with(Bytes("Chybí povinná sekce"));
                            }) &&
                !DefinesTwice(model_.SheetData().Ranges());
    if (readable_) {
        Write();
        CheckTaken("start");
    }
}

void CLawRun::Write() {
    par_ = model_.Written();
    dmf_ = WrittenDmf(model_);
    state_ = WholeState(model_) + par_ + dmf_;
}

void CLawRun::Fail(const std::string &cause, const std::string &details) {
    if (failure_.cause.empty()) {
        failure_ = {cause, details};
    }
}

void CLawRun::CheckTaken(const std::string &what) {
    directory_.Hold(pdt_.modules);
    CModelSession fresh;
    const bool read = fresh.Translate(pdt_.pdt, par_, dmf_);
    if (!read || !fresh.Messages().Rows().empty() || !fresh.boxes.empty()) {
        const std::string messages = fresh.MessageLines() + (fresh.boxes.empty() ? "" : "E " + fresh.boxes[0] + "\n");
        const std::size_t text = std::min(messages.find(' '), messages.size());
        Fail(what + ": message" + messages.substr(text, messages.find_first_of(":0123456789\n", text) - text),
             messages);
    }
    const TLawState ours = StateUnderLaw(model_);
    const TLawState theirs = StateUnderLaw(fresh);
    const auto compare = [&](const std::string &first, const std::string &second, const char *difference) {
        if (first != second) {
            Fail(what + ": other " + difference, Difference(first, second));
        }
    };
    const bool conditions = Difference(ours.sections, theirs.sections).find("[off]") != std::string::npos;
    compare(ours.names, theirs.names, "sections");
    compare(ours.sections, theirs.sections, conditions ? "conditions" : "cells");
    // What lies over a range of another kind in the driver map gets its own kind with the first edit.
    if (what != "start") {
        compare(ours.table, theirs.table, "channels");
    }
    compare(SortedSections(par_), SortedSections(fresh.Written()), "text");
    compare(dmf_, WrittenDmf(fresh), "driver map");
}

void CLawRun::CheckRefused(const std::string &before) {
    if (state_ != before) {
        Fail("refused: something changed", Difference(before, state_));
    }
    const std::string told = std::to_string(model_.boxes.size()) + " boxes for refusal " +
                             std::to_string(static_cast<std::uint32_t>(edit_.Refusal()));
    const bool bad_channel = edit_.Refusal() == TRefusal::kBadChannel;
    if (found_ && (edit_.Refusal() == TRefusal::kNone || model_.boxes.size() > 1 ||
                   (edit_.Refusal() != TRefusal::kGroup && model_.boxes.empty() == bad_channel))) {
        Fail("refused: " + told, "");
    }
}

bool CLawRun::Step(TEdit &edit, CDice *dice) {
    static const char *const kNames[] = {"cell",    "channel cell",   "add section",
                                         "add key", "remove section", "remove key"};
    directory_.Hold(pdt_.modules);
    model_.boxes.clear();
    const std::string before = state_;
    found_ = false;
    taken_ = Carry(edit, dice);
    Write();
    if (!taken_) {
        CheckRefused(before);
        return failure_.cause.empty();
    }
    if (!model_.boxes.empty()) {
        Fail("taken: a box", model_.boxes[0]);
    }
    CheckTaken(kNames[static_cast<std::size_t>(edit.kind)]);
    return failure_.cause.empty();
}

/// True if the edit was taken. Nothing is added if that takes the definition away.
bool CLawRun::Carry(TEdit &edit, CDice *dice) {
    using TKind = TEdit::TKind;
    if (edit.kind == TKind::kChannelCell) {
        return SetChannelCell(edit, dice);
    }
    if (edit.kind == TKind::kAddSection) {
        CSectionDef *const definition = Find(model_.SheetData().Definitions(), edit.section, 1);
        found_ = definition != nullptr && edit_.CanAddSection(*definition);
        return found_ && (edit_.AddSection(*definition) != nullptr || edit_.Refusal() == TRefusal::kNone);
    }
    CSectionDef *const section = Find(model_.SheetData().Instances().List(), edit.section, edit.section_number);
    if (section == nullptr) {
        return false;
    }
    if (edit.kind == TKind::kAddKey) {
        const CKeyDef *const definition = Find(section->Definition()->Keys(), edit.key, 1);
        found_ = definition != nullptr && definition->Has(kq_pdt::nfMultiple);
        return found_ && (edit_.AddKey(*section, *definition) != nullptr || edit_.Refusal() == TRefusal::kNone);
    }
    CKeyDef *const key = edit.key.empty() ? nullptr : Find(section->Keys(), edit.key, edit.key_number, section);
    found_ = key != nullptr || edit.key.empty();
    return found_ && (edit.kind == TKind::kRemoveSection ? edit_.RemoveSection(*section)
                      : edit.kind == TKind::kRemoveKey   ? edit_.RemoveKey(*key)
                                                         : EditCell(*section, key, edit, dice));
}

bool CLawRun::EditCell(CSectionDef &section, CKeyDef *key, TEdit &edit, CDice *dice) {
    TCellEditor *const editor = edit_.OpenCell(section, key, edit.cell);
    if (editor == nullptr) {
        return edit_.CloseCell(true);
    }
    edit.value = dice != nullptr ? ChooseValue(*editor, *dice) : edit.value;
    const std::string text = edit.value.substr(edit.value.empty() ? 0 : 1);
    const bool types = edit.value.starts_with('"');
    bool acted = false;
    if (editor->kind == TCellEditor::TControl::kCountBox) {
        acted = types && editor->CountBox().UserType(text);
    } else if (editor->kind == TCellEditor::TControl::kEditBox) {
        acted = types && editor->EditBox().UserType(text);
    } else if (types) {
        acted = editor->ComboBox().UserType(text);
    } else if (edit.value.starts_with('=')) {
        for (std::size_t entry = editor->ComboBox().EntryCount(); entry > 0 && !acted; --entry) {
            acted = editor->ComboBox().Entry(entry) == text && editor->ComboBox().UserSelect(entry);
        }
    }
    return edit_.CloseCell(acted);
}

bool CLawRun::SetChannelCell(TEdit &edit, CDice *dice) {
    kq_pdt::CChannelRangeTable &ranges = model_.SheetData().Ranges();
    if (!ranges.IsCellEditable(edit.row, edit.cell)) {
        return false;
    }
    if (dice != nullptr) {
        edit.value = dice->Pick<std::string>(edit.cell == 3 ? std::vector<std::string>{"real", "boolean", "integer"}
                                                            : std::vector<std::string>{"input", "output"});
    }
    ranges.SetCellText(edit.row, edit.cell, edit.value);
    return true;
}
