#include "model/sheet_data.h"

#include "driver/channels/text_out.h"
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
    if (window_ != nullptr) {
        window_->PostCommand(command, parameter);
    }
}

void CParSheetData::ReportError(std::string_view text) {
    if (window_ != nullptr) {
        window_->AddError(text, {}, kNoNumber);
    }
}

void CParSheetData::ReadPar(std::string_view text) {
    ClearInstances();
    CParReader(*this).Read(text);
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
    definitions_.push_back(std::move(section));
    assignments_.AddDependent(*definitions_.back());
    return *definitions_.back();
}

void CParSheetData::ClearInstances() {
    next_table_id_ = 2;
    instances_.Clear();
}

void CParSheetData::ClearData() {
    can_add_multiple_ = false;
    ClearInstances();
    while (!definitions_.empty()) {
        std::unique_ptr<CSectionDef> section = std::move(definitions_.back());
        definitions_.pop_back();
        instances_.Release(std::move(section));
    }
    assignments_.FindDependents(definitions_);
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
