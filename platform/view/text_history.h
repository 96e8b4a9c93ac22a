#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

/// The steps by which a text came to be what it is, to take them back and make them again. A step keeps only the piece
/// in which the texts before and after it differ, and of that piece only the form that isn't in the text at present.
///
/// What the program does to the text, often in a great many pieces, becomes one step when it is finished: until then
/// the text as it was before is kept whole.
class CTextHistory {
public:
    /// What is to be done to the text to go one step.
    struct TChange {
        std::size_t offset = 0;
        std::size_t removed = 0;
        std::string inserted;
    };

    /// Forgets all steps; the present text is the first one.
    void Clear();
    /// From now on no steps are kept, or they are again. Off, it forgets all.
    void Keep(bool kept);
    bool IsKept() const { return kept_; }

    /// The program is about to append to a text of this size. True if a step begins with it.
    bool NoteAppend(std::size_t size);
    /// The program is about to replace a text by another.
    void NoteReplacement(std::string &&text);
    /// True if the program has a step that isn't finished; `text` is the present one.
    bool IsProgramStepOpen(std::string_view text) const;
    /// Makes one step of what the program did, if it did anything; `text` is the present one. Each of the operations
    /// below has to be preceded by it.
    void FinishProgramStep(std::string_view text);

    /// A piece of the text is about to be replaced by a person. A typed character may join the step before it.
    void NoteEdit(std::string_view text, std::size_t offset, std::size_t removed, std::string_view inserted,
                  bool typed);

    bool CanStepBack() const { return position_ > 0; }
    bool CanStepForward() const { return position_ < steps_.size(); }
    /// Goes one step, which must exist; `text` is the one before the change that is given.
    TChange StepBack(std::string_view text);
    TChange StepForward(std::string_view text);

    /// The present text is the saved one.
    void MarkSaved();
    bool IsAtSaved() const { return saved_ == position_; }

    /// The bytes that all steps take, in whichever direction they are gone.
    std::size_t Bytes() const { return bytes_; }

private:
    struct TStep {
        std::size_t offset = 0;
        std::string other;       ///< the piece's form that isn't in the text at present
        std::size_t length = 0;  ///< the length of the one that is
        bool typed = false;

        std::size_t Bytes() const { return sizeof(TStep) + other.size() + length; }
    };

    void Append(TStep step, std::size_t text_size);
    bool Join(std::string_view text, std::size_t offset, std::size_t removed, std::string_view inserted);
    static TChange Swap(TStep &step, std::string_view text);

    bool kept_ = true;
    std::deque<TStep> steps_;
    std::size_t position_ = 0;  ///< the number of steps that the text has behind it
    std::optional<std::size_t> saved_ = 0;
    std::size_t bytes_ = 0;

    std::optional<std::string> before_;    ///< the text before the program replaced it
    std::optional<std::size_t> appended_;  ///< its size, if the program only appended
};
