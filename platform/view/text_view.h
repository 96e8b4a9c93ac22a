#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/bounded_text.h"
#include "platform/base/export.h"
#include "platform/view/view.h"

class CTextHistory;
class CTextLines;
class CToolBox;

/// The commands of a text view's own tool box. The view handles undo and redo; the others are for whoever shows it.
enum TTextCommand : std::uint32_t {
    cmTextNew = 0xC0,
    cmTextOpen = 0xC1,
    cmTextSave = 0xC3,
    cmTextUndo = 0xC4,
    cmTextRedo = 0xC5,
    cmTextFind = 0xC6,
    cmTextReplace = 0xC7,
};

/// The icons of these commands.
enum TTextIcon : std::uint32_t {
    icTextSave = 1013,
    icTextNew = 1021,
    icTextOpen = 1022,
    icTextUndo = 1024,
    icTextRedo = 1025,
    icTextFind = 1026,
    icTextReplace = 1027,
};

/// A text with a cursor and a selection, a mark that says whether it is saved, and words to be coloured. Without a
/// window it serves for writing text into. The text is any bytes in code page 1250, at most kMaxSize of them; a line
/// ends with LF or CR LF.
///
/// The members lie in three files: text_view.cpp (the program's side), text_edit.cpp (a person's edits and their
/// history, the tool box) and text_find.cpp (find and replace).
class KQ_API CTextView : public CView {
public:
    CTextView();
    ~CTextView() override;

    TViewKind Kind() const override { return TViewKind::kText; }

    static constexpr std::uint32_t kMaxSize = 0xFFFFFFFF;

    /// The code, of class ecNotice, that tells of steps.
    static constexpr std::uint32_t kStepsChanged = 0xC8;

    /// A word that is shown in a colour of its own.
    struct TColoredId {
        kq_base::TText name;
        std::uint32_t color = 0;
    };

    /// What find takes for a match.
    struct TFindOptions {
        bool match_case = false;  ///< otherwise the case of letters doesn't count, accented ones included
        bool whole_word = false;  ///< neither a letter nor a digit nor `_` may be directly before or after it
        bool backwards = false;   ///< towards the beginning
    };

    /// The colour in which numbers are shown until another one is set.
    static constexpr std::uint32_t kNumberColor = 0x00800000;
    /// The colour of numbers that was set.
    std::optional<std::uint32_t> number_color;

    // The program's side. What it does to the text between two of a person's edits is one step of the history.

    /// Appends a text and moves the cursor to the end. What goes beyond kMaxSize is cut.
    void InsertText(std::string_view text);
    /// The same for one character.
    void InsertChar(char character) { InsertText({&character, 1}); }
    /// Empties the text; the cursor goes to its beginning.
    void Clear() { SetText({}); }
    /// Replaces the text, cut at kMaxSize; the cursor goes to the beginning. An equal text leaves the saved mark.
    void SetText(std::string_view text);
    /// What the program did to the text since the last step is one step; nothing if the text is the same. Otherwise the
    /// step ends with the next load or save or with what a person does next.
    void FinishStep();
    /// Whether steps are kept to be undone, as they are from the start. Those of a view that no person edits only take
    /// memory: the steps together may take four times the text's size (1 MiB at least), the oldest go first, the last
    /// one always stays.
    void SetHistoryKept(bool kept);

    /// The whole text as one block, not terminated, valid until the text changes.
    void GetTextBlock(const char *&data, std::uint32_t &size) const;
    std::string_view Text() const { return text_; }

    /// Replaces the text by a file's and marks it saved. A load into a view that is empty and has no step begins the
    /// history; any other is a step.
    /// False leaves all as it was and gives the reason.
    bool LoadFromFile(std::string_view path, std::string &error);
    /// Replaces the text, as a step, by that of a file which isn't the one that the text is saved to. It counts as
    /// saved until the next change or SetSaved, but undo and redo don't take it for the saved one. False likewise.
    bool ImportFile(std::string_view path, std::string &error);
    /// Writes the whole text to a file and marks it saved. False gives the reason; the file's old content stays.
    bool SaveToFile(std::string_view path, std::string &error);

    /// True if nothing changed since the last load, save or SetSaved(true), or if undo or redo led back to the text of
    /// that time.
    bool IsSaved() const { return saved_; }
    /// False marks the text as changed until then.
    void SetSaved(bool saved);

    /// Moves the cursor, both counted from 0: a line after the last means the last one, a column beyond a line's end
    /// means that end. Nothing is selected then.
    void SetLineIndex(std::uint32_t line, std::uint32_t column);
    std::uint32_t CursorLine() const;
    std::uint32_t CursorColumn() const;
    /// The number of characters before the cursor.
    std::size_t CursorOffset() const { return cursor_; }
    /// Asks for the cursor to be scrolled into sight.
    void FitCursor() { Changed(TViewChange::kFitCursor); }
    /// The characters between the selection's other end and the cursor; without a selection 0 from the cursor on.
    std::size_t SelectionStart() const;
    std::size_t SelectionLength() const;
    /// The other end of the selection; the cursor's offset without one.
    std::size_t AnchorOffset() const { return anchor_; }

    /// The number of lines, at least 1: what follows the last line end is one too, even if it is empty.
    std::size_t LineCount() const;
    /// The offset of a position, both counted from 1. False if there is no such line or the column is above the line's
    /// length plus 1.
    bool FindOffset(std::uint32_t line, std::uint32_t column, std::size_t &offset) const;

    /// Shows a word in a colour. Of a word given twice the last one counts.
    void AddColoredId(std::string_view name, std::uint32_t color);
    void ClearColoredIdList();
    const std::vector<TColoredId> &ColoredIds() const { return colored_ids_; }

    /// Who gets kStepsChanged when a step to be undone or made again comes or goes, not owned.
    void SetStepReceiver(CEventHandler *receiver) { step_receiver_ = receiver; }

    /// The view's own tool box, which the window may rearrange and give a receiver; at first that is the view.
    CToolBox &ToolBox();
    /// Ends it. One that is asked for later is a new one.
    void EndToolBox();

    // What a person does: text_edit.cpp. Each gives false, and changes nothing, where a person couldn't do it; none can
    // be done in a view that is disabled.

    /// Replaces as many characters from a position on, counted from 1, by a text; a line end counts as the one or two
    /// characters that it consists of. The cursor goes after the new text. False if the position doesn't exist, fewer
    /// characters follow, or the text would become too long. An equal text is no change.
    bool UserReplace(std::uint32_t line, std::uint32_t column, std::uint32_t count, std::string_view text);
    /// The same from an offset on. Adjoining characters that are typed one by one make one step, up to the next word.
    bool UserReplaceAt(std::size_t offset, std::size_t length, std::string_view text, bool typed = false);
    /// Replaces what is selected; without a selection the text comes at the cursor.
    bool UserReplaceSelection(std::string_view text);
    /// Moves the cursor and the selection's other end; both are offsets.
    bool UserSelect(std::size_t anchor, std::size_t cursor);
    /// Takes the last step back, or makes it again. The cursor goes after what changed. False if there is none.
    bool UserUndo();
    bool UserRedo();
    /// True if there is a step.
    bool CanUndo() const;
    bool CanRedo() const;

    /// Handles undo and redo.
    void ReceiveEvent(TEvent &event) override;

    // Find and replace: text_find.cpp.

    /// Selects the next match after the selection, or before it if backwards, round the end of the text, and asks for
    /// it to be scrolled into sight. False if there is none, or the text to find is empty.
    bool UserFind(std::string_view text, const TFindOptions &options);
    /// Replaces all matches, from the beginning on, in one step, and gives their number; 0, and nothing replaced, if
    /// the text would become too long. The cursor goes after the last one.
    std::size_t UserReplaceAll(std::string_view text, std::string_view replacement, const TFindOptions &options);

private:
    /// The bytes of a text within the bound; on a system of 32 bits a string's own bound is lower.
    static std::size_t MaxSize();
    /// Replaces a piece, moves the cursor after it and reports all that changed.
    void ReplacePiece(std::size_t offset, std::size_t removed, std::string_view inserted);
    void MoveCursor(std::size_t anchor, std::size_t cursor);
    void UpdateTools();

    std::string text_;
    std::size_t cursor_ = 0;
    std::size_t anchor_ = 0;
    bool saved_ = true;
    std::vector<TColoredId> colored_ids_;
    std::unique_ptr<CTextLines> lines_;
    std::unique_ptr<CTextHistory> history_;
    std::unique_ptr<CToolBox> tool_box_;
    CEventHandler *step_receiver_ = nullptr;
    bool told_undo_ = false;  ///< what the receiver heard last
    bool told_redo_ = false;
};
