#include "model/instances.h"

#include <algorithm>

#include "model/sheet_data.h"

namespace kq_pdt {

CSectionDef &CInstances::Append(std::unique_ptr<CSectionDef> section) {
    section->SetSerial(next_serial_++);
    list_.push_back(std::move(section));
    index_.Add(*list_.back());
    return *list_.back();
}

void CInstances::Renamed(CSectionDef &section) { index_.Rename(section); }

void CInstances::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    std::size_t next = 0;
    iterations_.push_back(&next);
    while (next < list_.size()) {
        list_[next++]->ParameterChanged(variable, value, ok);
    }
    iterations_.pop_back();
    EndReleased();
}

void CInstances::ReleaseOf(const CSectionDef &definition) {
    // What an instance holds may take others along, so each is looked up anew.
    while (CSectionDef *instance = index_.FirstOf(&definition)) {
        const auto found =
            std::lower_bound(list_.begin(), list_.end(), instance->Serial(),
                             [](const auto &other, std::uint32_t serial) { return other->Serial() < serial; });
        const auto index = static_cast<std::size_t>(found - list_.begin());
        std::unique_ptr<CSectionDef> section = std::move(*found);
        list_.erase(found);
        for (std::size_t *next : iterations_) {
            *next -= *next > index ? 1 : 0;
        }
        index_.Remove(*section);
        section->SheetData()->Post(cmRebuildTable, section->RowId());
        Release(std::move(section));
    }
}

/// From the back, since an instance may take those that its module brought along with it.
void CInstances::Clear() {
    while (!list_.empty()) {
        std::unique_ptr<CSectionDef> section = std::move(list_.back());
        list_.pop_back();
        index_.Remove(*section);
        Release(std::move(section));
    }
}

void CInstances::Write(CTextOut &out) const {
    for (const auto &section : list_) {
        section->WriteSection(out);
    }
}

/// An instance is in use while its scope is in force. A definition has to outlive its instances, so it is in use as
/// long as any of them may be.
bool CInstances::IsInUse(const CSectionDef &section) const {
    const bool is_definition = section.Definition() == nullptr;
    return is_definition ? !iterations_.empty() || holds_ != 0 || !released_.empty() : section.IsEntered();
}

/// An instance that isn't in use gives its channels back at once, so that others can have them, whatever iterates or
/// holds.
void CInstances::Release(std::unique_ptr<CSectionDef> section) {
    if (!IsInUse(*section)) {
        section->Done();
        return;
    }
    section->Retire();
    released_.push_back(std::move(section));
}

void CInstances::EndReleased() {
    while (iterations_.empty() && holds_ == 0 && !released_.empty() && !released_.front()->IsEntered()) {
        const std::unique_ptr<CSectionDef> section = std::move(released_.front());
        released_.erase(released_.begin());
        section->Done();
    }
}

}  // namespace kq_pdt
