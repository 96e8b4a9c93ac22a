#include "model/sheet_data.h"

#include <algorithm>

#include "driver/text_out.h"
#include "model/par_reader.h"
#include "model/texts.h"

namespace kq_pdt {

namespace {

CParSheetData *current_sheet_data = nullptr;

}  // namespace

CParSheetData *CParSheetData::Current() { return current_sheet_data; }

void CParSheetData::SetCurrent(CParSheetData *data) { current_sheet_data = data; }

CParSheetData::CParSheetData() { root_scope_.SetOwner(this); }

CParSheetData::~CParSheetData() {
    Done();
    if (current_sheet_data == this) {
        current_sheet_data = nullptr;
    }
}

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

void CParSheetData::WriteParText(CTextOut &out) {
    for (const auto &section : instances_) {
        section->WriteSection(out);
    }
}

CSectionDef *CParSheetData::GetSection(std::size_t index) const {
    return index < instances_.size() ? instances_[index].get() : nullptr;
}

void CParSheetData::FindByTable(std::uint32_t id, CSectionDef *&section, CKeyDef *&key) {
    section = nullptr;
    key = nullptr;
    for (const auto &candidate : instances_) {
        if (candidate->RowId() == id) {
            section = candidate.get();
            return;
        }
        const auto &keys = candidate->Keys();
        const auto place =
            std::find_if(keys.begin(), keys.end(), [id](const auto &other) { return other->RowId() == id; });
        if (place != keys.end()) {
            section = candidate.get();
            key = place->get();
            return;
        }
    }
}

CSectionDef &CParSheetData::AppendInstance(std::unique_ptr<CSectionDef> section) {
    section->SetSerial(next_serial_++);
    instances_.push_back(std::move(section));
    index_.Add(*instances_.back());
    return *instances_.back();
}

void CParSheetData::SectionRenamed(CSectionDef &section) { index_.Rename(section); }

CSectionDef &CParSheetData::AppendDefinition(std::unique_ptr<CSectionDef> section) {
    definitions_.push_back(std::move(section));
    return *definitions_.back();
}

/// From the back, since an instance may take those that its module brought along with it.
void CParSheetData::ClearInstances() {
    next_table_id_ = 2;
    while (!instances_.empty()) {
        std::unique_ptr<CSectionDef> section = std::move(instances_.back());
        instances_.pop_back();
        index_.Remove(*section);
        Release(std::move(section));
    }
}

void CParSheetData::ClearData() {
    can_add_multiple_ = false;
    ClearInstances();
    while (!definitions_.empty()) {
        std::unique_ptr<CSectionDef> section = std::move(definitions_.back());
        definitions_.pop_back();
        Release(std::move(section));
    }
    dependents_.clear();
    keyword_words_.clear();
    root_scope_.Clear();
}

void CParSheetData::Done() {
    ClearData();
    ranges_.Clear();
}

/// During a walk over the instances a released section may still be at work further down the stack.
void CParSheetData::Release(std::unique_ptr<CSectionDef> section) {
    if (walks_.empty()) {
        section->Done();
    } else {
        dying_.push_back(std::move(section));
    }
}

void CParSheetData::ReleaseDying() {
    while (walks_.empty() && !dying_.empty()) {
        CSectionList dying = std::move(dying_);
        dying_.clear();
        for (const auto &section : dying) {
            section->Done();
        }
    }
}

void CParSheetData::FindDependents() {
    dependents_.clear();
    for (const auto &definition : definitions_) {
        if (definition->DependOn() != nullptr) {
            dependents_.push_back(definition.get());
        }
    }
}

void CParSheetData::ReadVariable(std::string_view name, TParValue &value) { root_scope_.Value(name, value); }

CVariable *CParSheetData::FindVariable(std::string_view name) { return root_scope_.Find(name); }

std::uint32_t CParSheetData::NewChannels(std::uint32_t count) { return NewChannelRange(false, count); }

}  // namespace kq_pdt
