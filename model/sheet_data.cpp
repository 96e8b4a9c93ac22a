#include "model/sheet_data.h"

#include <algorithm>

#include "driver/channels/text_out.h"
#include "model/edit_state.h"
#include "model/par_reader.h"
#include "model/texts.h"

namespace kq_pdt {

CParSheetData::CParSheetData() { root_scope_.SetOwner(this); }

CParSheetData::~CParSheetData() { Done(); }

void CParSheetData::SetWindow(CReportWindow *window) {
    window_ = window;
    ranges_.SetOwner(window);
}

void CParSheetData::Post(TWindowCommand command, std::uint32_t parameter) {
    if (edit_ != nullptr) {
        const std::pair posted(command, parameter);
        auto &commands = edit_->commands;
        if (std::find(commands.begin(), commands.end(), posted) == commands.end()) {
            commands.push_back(posted);
        }
    } else if (window_ != nullptr) {
        window_->PostCommand(command, parameter);
    }
}

/// What the reading left to settle is settled first, since the edit may move it.
void CParSheetData::BeginEdit() {
    edit_ = std::make_unique<TEditState>(ranges_);
    edit_->channels_changed = ranges_.Settle();
}

void CParSheetData::Refuse(bool bad_channel) {
    if (edit_ != nullptr) {
        edit_->refused = true;
        edit_->bad_channel = edit_->bad_channel || bad_channel;
    }
}

bool CParSheetData::EndEdit(bool &bad_channel) {
    bool taken = false;
    bool silent = false;
    TEditState::TCommands commands;
    bool channels_changed = false;
    {
        const CInstances::CHold hold(instances_);
        if (!edit_->refused) {
            assignments_.Settle();
        }
        taken = !edit_->refused;
        bad_channel = edit_->bad_channel;
        silent = !taken && !bad_channel && !edit_->bad_group;
        if (taken) {
            edit_->channels_changed = ranges_.Settle() || edit_->channels_changed;
            edit_->channels.Commit();
            commands = std::move(edit_->commands);
            channels_changed = edit_->channels_changed;
            if (listener_ != nullptr) {
                listener_->EditTaken(edit_->journal.TakeSteps());
            }
        } else {
            edit_->journal.TakeBack();
            edit_->channels.RollBack();
            references_outdated_ = true;
        }
        edit_.reset();
    }
    if (channels_changed) {
        TellChannelsChanged();
    }
    for (const auto &[command, parameter] : commands) {
        Post(command, parameter);
    }
    if (!taken && bad_channel) {
        ShowBadChannel();
    } else if (silent && window_ != nullptr) {
        window_->ShowHint(texts::kCannotChange);
    }
    return taken;
}

void CParSheetData::TakeBackEdit(CJournal::TSteps &steps) {
    const CInstances::CHold hold(instances_);
    CJournal::TakeBack(steps);
    references_outdated_ = true;
}

void CParSheetData::RowsChanged(std::uint32_t table, std::size_t row, bool inserted) {
    if (listener_ != nullptr && table != 0 && !reading_par_) {
        listener_->RowsChanged(table, static_cast<std::uint32_t>(row), inserted);
    }
}

void CParSheetData::NodeReleased(const CDefNode &node) {
    if (open_editor_ != nullptr && (open_editor_->section == &node || open_editor_->key == &node)) {
        open_editor_.reset();
    }
}

const CReferenceIndex &CParSheetData::References() {
    if (references_outdated_) {
        references_outdated_ = false;
        references_.Rebuild(definitions_);
    }
    return references_;
}

const CNameIndex &CParSheetData::DefinitionNames() {
    if (definition_names_outdated_) {
        definition_names_outdated_ = false;
        definition_names_.Clear();
        for (const auto &definition : definitions_) {
            AddDefinitionName(*definition);
        }
    }
    return definition_names_;
}

void CParSheetData::AddDefinitionName(CSectionDef &definition) {
    definition.SetSerial(next_definition_++);
    if (definition.Names() != nullptr) {
        definition_names_.Add(CNameIndex::LeadsOf(definition.Names()->Items()), {definition.Serial(), &definition});
    }
}

bool CParSheetData::CanAddMultiple() const {
    return std::any_of(definitions_.begin(), definitions_.end(),
                       [](const auto &section) { return section->Has(nfMultiple) && section->DependOn() == nullptr; });
}

void CParSheetData::ReportError(std::string_view text) {
    if (window_ != nullptr) {
        window_->AddError(text, {}, kNoNumber);
    }
}

void CParSheetData::ReadPar(std::string_view text) {
    ClearInstances();
    reading_par_ = true;
    CParReader(*this).Read(text);
    reading_par_ = false;
    module_lists_.Clear();
}

void CParSheetData::WriteParText(CTextOut &out) { instances_.Write(out); }

void CParSheetData::FindByTable(std::uint32_t id, CSectionDef *&section, CKeyDef *&key) {
    section = nullptr;
    key = nullptr;
    const auto found = tables_.find(id);
    if (found == tables_.end()) {
        return;
    }
    if (found->second->Has(nfKey)) {
        key = static_cast<CKeyDef *>(found->second);
        section = key->Section();
    } else {
        section = static_cast<CSectionDef *>(found->second);
    }
}

void CParSheetData::TableChanged(CDefNode &node, std::uint32_t old_id, std::uint32_t id) {
    const auto old = tables_.find(old_id);
    if (old != tables_.end() && old->second == &node) {
        tables_.erase(old);
    }
    if (id != 0) {
        tables_[id] = &node;
    }
}

CSectionDef &CParSheetData::AppendDefinition(std::unique_ptr<CSectionDef> section) {
    const bool refers = !section->Has(nfUnrecognised);
    definitions_.push_back(std::move(section));
    references_outdated_ = references_outdated_ || refers;
    if (!definition_names_outdated_) {
        AddDefinitionName(*definitions_.back());
    }
    CJournal::Note([this] {
        definition_names_outdated_ = true;
        instances_.Bury(std::move(definitions_.back()));
        definitions_.pop_back();
    });
    return *definitions_.back();
}

void CParSheetData::ClearInstances() { instances_.Clear(); }

void CParSheetData::ClearData() {
    if (listener_ != nullptr) {
        listener_->ModelCleared();
    }
    open_editor_.reset();
    ClearInstances();
    while (!definitions_.empty()) {
        std::unique_ptr<CSectionDef> section = std::move(definitions_.back());
        definitions_.pop_back();
        section->Done();
    }
    references_outdated_ = true;
    definition_names_outdated_ = true;
    keyword_words_.clear();
    root_scope_.Clear();
}

void CParSheetData::Done() {
    ClearData();
    ranges_.Clear();
}

void CParSheetData::ReadVariable(std::string_view name, TParValue &value) { root_scope_.Value(name, value); }

CVariable *CParSheetData::FindVariable(std::string_view name) { return root_scope_.Find(name); }

std::uint32_t CParSheetData::NewChannels(std::uint32_t count) { return NewChannelRange(false, count); }

}  // namespace kq_pdt
