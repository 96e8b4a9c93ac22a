#include "model/journal.h"

#include <cassert>

namespace kq_pdt {

thread_local CJournal *CJournal::active_ = nullptr;

CJournal::CJournal() {
    assert(active_ == nullptr);
    active_ = this;
}

CJournal::~CJournal() { active_ = nullptr; }

void CJournal::Note(std::function<void()> take_back) {
    if (active_ != nullptr) {
        active_->steps_.push_back(std::move(take_back));
    }
}

/// Taking back changes fields, too, which nobody needs to note.
void CJournal::TakeBack(TSteps &steps) {
    CJournal *active = std::exchange(active_, nullptr);
    while (!steps.empty()) {
        steps.back()();
        steps.pop_back();
    }
    active_ = active;
}

}  // namespace kq_pdt
