#include "configurator/sheet_history.h"

#include <string>
#include <utility>
#include <vector>

#include "driver/channels/channel_transaction.h"
#include "model/sheet_data.h"

namespace kq_pdt {

struct CSheetHistory::TStep {
    std::string name;
    TAction action;
    TAction restore;
    CJournal::TSteps taken_back_by;
    std::unique_ptr<CChannelTransaction> channels;
    std::uint64_t state_after = 0;  ///< the number of the state that the step leads to
    bool taken = false;
};

/// Steps lie in the table's journal as transactions inside each other, of which the newest is the innermost; so they
/// end from the back.
struct CSheetHistory::TState {
    TState(CParSheetData &data, bool saved)
        : hold(data.Instances()), data(data), saved_state(saved ? 0 : kNeverSaved) {}
    ~TState() {
        while (!done.empty()) {
            done.back().channels->Commit();
            done.pop_back();
        }
    }
    TState(const TState &) = delete;
    TState &operator=(const TState &) = delete;

    static constexpr std::uint64_t kNeverSaved = ~std::uint64_t{0};

    std::uint64_t Present() const { return done.empty() ? 0 : done.back().state_after; }

    CInstances::CHold hold;
    CParSheetData &data;
    std::vector<TStep> done;
    std::vector<TStep> undone;  ///< to be made again, the next one last
    std::uint64_t states = 0;
    std::uint64_t saved_state;
};

CSheetHistory::CSheetHistory(CParSheetData &data) : data_(data) {}

CSheetHistory::~CSheetHistory() = default;

void CSheetHistory::Begin(bool saved) {
    state_.reset();
    state_ = std::make_unique<TState>(data_, saved);
}

void CSheetHistory::End() { state_.reset(); }

void CSheetHistory::EditTaken(CJournal::TSteps &&steps) {
    ++edits_taken_;
    if (open_ != nullptr) {
        open_->taken_back_by = std::move(steps);
        open_->taken = true;
    }
}

/// Carries a step out and keeps it if its edit was taken and counts.
bool CSheetHistory::Carry(std::string_view name, const TAction &action, const std::function<bool()> &counts) {
    TStep step;
    step.name = name;
    step.action = action;
    if (snapshot_) {
        step.restore = snapshot_();
    }
    step.channels = std::make_unique<CChannelTransaction>(data_.Ranges());
    open_ = &step;
    action();
    open_ = nullptr;
    if (!step.taken) {
        step.channels->Commit();
        return false;
    }
    if (counts && !counts()) {
        data_.TakeBackEdit(step.taken_back_by);
        step.channels->RollBack();
        return false;
    }
    step.state_after = ++state_->states;
    state_->done.push_back(std::move(step));
    return true;
}

bool CSheetHistory::Do(std::string_view name, const TAction &action, const std::function<bool()> &counts) {
    const std::uint64_t before = edits_taken_;
    if (!state_ || open_ != nullptr) {
        action();
    } else if (Carry(name, action, counts)) {
        state_->undone.clear();
    }
    return edits_taken_ != before;
}

bool CSheetHistory::CanUndo() const { return state_ && !state_->done.empty(); }

bool CSheetHistory::CanRedo() const { return state_ && !state_->undone.empty(); }

std::string_view CSheetHistory::UndoName() const {
    return CanUndo() ? std::string_view(state_->done.back().name) : std::string_view();
}

std::string_view CSheetHistory::RedoName() const {
    return CanRedo() ? std::string_view(state_->undone.back().name) : std::string_view();
}

bool CSheetHistory::Undo() {
    if (!CanUndo()) {
        return false;
    }
    TStep step = std::move(state_->done.back());
    state_->done.pop_back();
    data_.TakeBackEdit(step.taken_back_by);
    step.channels->RollBack();
    step.channels.reset();
    if (step.restore) {
        step.restore();
        step.restore = nullptr;
    }
    state_->undone.push_back(std::move(step));
    return true;
}

bool CSheetHistory::Redo() {
    if (!CanRedo()) {
        return false;
    }
    const TStep step = std::move(state_->undone.back());
    state_->undone.pop_back();
    const std::uint64_t states = state_->states;
    if (!Carry(step.name, step.action, nullptr)) {
        state_->undone.clear();
        return false;
    }
    // The same step on the same state leads to the same state.
    state_->done.back().state_after = step.state_after;
    state_->states = states;
    return true;
}

void CSheetHistory::MarkSaved() {
    if (state_) {
        state_->saved_state = state_->Present();
    }
}

void CSheetHistory::MarkUnsaved() {
    if (state_) {
        state_->saved_state = TState::kNeverSaved;
    }
}

bool CSheetHistory::IsAtSaved() const { return state_ && state_->saved_state == state_->Present(); }

}  // namespace kq_pdt
