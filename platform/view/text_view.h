#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/bounded_text.h"
#include "platform/base/export.h"
#include "platform/view/view.h"

/// A text with a cursor, a mark that says whether it is saved, and words to be coloured. Without a window it serves for
/// writing text into. The text is any bytes in code page 1250, at most kMaxSize of them; a line ends with LF or CR LF.
class KQ_API CTextView : public CView {
public:
    TViewKind Kind() const override { return TViewKind::kText; }

    static constexpr std::uint32_t kMaxSize = 0xFFFFFFFF;

    /// A word that is shown in a colour of its own.
    struct TColoredId {
        kq_base::TText name;
        std::uint32_t color = 0;
    };

    /// The colour in which numbers are shown.
    std::uint32_t number_color = 0x00800000;

    /// Appends a text and moves the cursor to the end. What goes beyond kMaxSize is cut.
    void InsertText(std::string_view text);
    /// The same for one character.
    void InsertChar(char character) { InsertText({&character, 1}); }
    /// Empties the text; the cursor goes to its beginning.
    void Clear() { SetText({}); }
    /// Replaces the text, cut at kMaxSize; the cursor goes to the beginning. An equal text leaves the saved mark.
    void SetText(std::string_view text);

    /// The whole text as one block, not terminated, valid until the text changes.
    void GetTextBlock(const char *&data, std::uint32_t &size) const;
    std::string_view Text() const { return text_; }

    /// Replaces the text by a file's and marks it saved. False leaves all as it was and gives the reason.
    bool LoadFromFile(std::string_view path, std::string &error);
    /// Writes the whole text to a file and marks it saved. False gives the reason; the file's old content stays.
    bool SaveToFile(std::string_view path, std::string &error);

    /// True if nothing changed since the last load, save or SetSaved(true).
    bool IsSaved() const { return saved_; }
    void SetSaved(bool saved) { saved_ = saved; }

    /// Moves the cursor, both counted from 0: a line after the last means the last one, a column beyond a line's end
    /// means that end.
    void SetLineIndex(std::uint32_t line, std::uint32_t column);
    std::uint32_t CursorLine() const;
    std::uint32_t CursorColumn() const;
    /// The number of characters before the cursor.
    std::size_t CursorOffset() const { return cursor_; }
    /// Asks for the cursor to be scrolled into sight.
    void FitCursor() { Changed(TViewChange::kFitCursor); }

    /// Shows a word in a colour. Of a word given twice the last one counts.
    void AddColoredId(std::string_view name, std::uint32_t color);
    void ClearColoredIdList();
    const std::vector<TColoredId> &ColoredIds() const { return colored_ids_; }

private:
    std::string text_;
    std::size_t cursor_ = 0;
    bool saved_ = true;
    std::vector<TColoredId> colored_ids_;
};
