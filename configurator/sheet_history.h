#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "model/journal.h"

namespace kq_pdt {

class CParSheetData;

/// The steps that a person took on tab 1 since the last translation: committed cells, additions, deletions, changed
/// channels. Each can be taken back and made again. A step keeps the journal of its edit, so taking it back costs what
/// the edit cost and gives exactly the model, the channels and the texts as they were; what a step removed lives on
/// until the history forgets it.
class CSheetHistory {
public:
    using TAction = std::function<void()>;

    explicit CSheetHistory(CParSheetData &data);
    ~CSheetHistory();
    CSheetHistory(const CSheetHistory &) = delete;
    CSheetHistory &operator=(const CSheetHistory &) = delete;

    /// Begins anew with the present model, which is saved or not. No step is kept before the first call.
    void Begin(bool saved);
    /// Forgets all steps and keeps none from now on; before the model is cleared.
    void End();
    /// What is to be restored beside the model when a step is taken back: called before each step, gives what does it.
    void SetSnapshot(std::function<TAction()> snapshot) { snapshot_ = std::move(snapshot); }

    /// Carries out a step, of a name for the menu: the edit that the action makes of the model can be taken back from
    /// now on, and what was taken back before can't be made again. Without an edit that was taken nothing is kept. The
    /// action is kept to make the step again, on the same state as the first time, so it names what it edits by
    /// position and not by address. After an edit that was taken `counts` says whether it is a step at all; one that
    /// isn't is taken back at once. True if an edit was taken.
    bool Do(std::string_view name, const TAction &action, const std::function<bool()> &counts = nullptr);
    /// The edit under way was taken; called by whoever listens to the model.
    void EditTaken(CJournal::TSteps &&steps);

    bool CanUndo() const;
    bool CanRedo() const;
    /// The names of the steps; empty without one.
    std::string_view UndoName() const;
    std::string_view RedoName() const;
    /// False if there is no step; making one again also fails, and forgets it, if it is refused now.
    bool Undo();
    bool Redo();

    /// The present state is in the files now.
    void MarkSaved();
    /// The files hold none of the states, since a save failed halfway.
    void MarkUnsaved();
    /// True if the present state is the one that was last saved.
    bool IsAtSaved() const;

private:
    struct TStep;
    struct TState;

    bool Carry(std::string_view name, const TAction &action, const std::function<bool()> &counts);

    CParSheetData &data_;
    std::function<TAction()> snapshot_;
    std::unique_ptr<TState> state_;  ///< none before Begin
    std::uint64_t edits_taken_ = 0;
    TStep *open_ = nullptr;  ///< the step under way
};

}  // namespace kq_pdt
