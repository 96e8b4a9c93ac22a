#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace kq_pdt {

class CParSheetData;

/// The steps that a person took on tab 1 since the last translation: committed cells, additions, deletions, changed
/// channels. Each can be taken back and made again. A step keeps the journal of its edit, so taking it back costs what
/// the edit cost, and gives exactly the model, the table of channels and the texts as they were.
class CSheetHistory {
public:
    explicit CSheetHistory(CParSheetData &data);
    ~CSheetHistory();
    CSheetHistory(const CSheetHistory &) = delete;
    CSheetHistory &operator=(const CSheetHistory &) = delete;

    /// Forgets all steps. The present state is unsaved or not, as said.
    void Clear(bool saved);
    /// Opens a step, of a name for the menu; what Edit of the model takes until EndStep belongs to it. `again` makes it
    /// again after it was taken back; it works on the same state as the first time.
    void BeginStep(std::string_view name, std::function<void()> again);
    /// Keeps the step if an edit was taken in it.
    void EndStep();

    bool CanUndo() const;
    bool CanRedo() const;
    std::string UndoName() const;
    std::string RedoName() const;
    void Undo();
    void Redo();
    /// The present state is in the files now.
    void MarkSaved();
    /// True if the present state is the one that was last saved.
    bool IsAtSaved() const;

private:
    struct TState;
    std::unique_ptr<TState> state_;
};

}  // namespace kq_pdt
