#pragma once

#include <QString>

#include "desktop/peers/qt_peer.h"
#include "desktop/peers/text_highlighter.h"
#include "platform/view/text_view.h"

class QTextBlock;

namespace kq_desktop {

class CTextEditor;

/// A text. Qt's document shows the view's text, line for line: what a person does to the document goes to the view at
/// once, what the view tells comes back, and where the two differ the view is right.
class CTextPeer final : public CQtPeer {
public:
    CTextPeer(CTextView &view, CPeerAdvice &advice);
    ~CTextPeer() override;
    CTextPeer(const CTextPeer &) = delete;
    CTextPeer &operator=(const CTextPeer &) = delete;

    CTextEditor &Editor() const;
    /// Counts up with each change of the text.
    std::uint64_t Changes() const { return changes_; }
    /// The messages about the text changed.
    void ShowMarks();

protected:
    void Show(const TViewNotice &notice) override;

private:
    // What the view tells.
    void ShowAll();
    void ShowPiece(const TViewNotice &notice);
    void ReplaceBlocks(int first, int removed, std::size_t from_line, std::size_t to_line);
    void ShowCursor();
    void ColorAnew();

    // What a person does.
    void DocumentChanged(int position, int removed, int added);
    void CursorMoved();

    // Between offsets in the view's text and positions in the document, where every line end is one character.
    std::size_t LineOf(std::size_t offset) const;
    std::size_t StartOf(std::size_t line) const;
    std::string_view LineText(std::size_t line) const;
    int PositionOf(std::size_t offset) const;
    std::size_t OffsetOf(int position) const;
    std::string_view LineEnd(std::size_t offset) const;

    CTextView &view_;
    CTextHighlighter highlighter_;
    std::uint64_t changes_ = 0;
    bool stale_ = true;  ///< the document isn't the view's text any more
    bool syncing_ = false;
};

}  // namespace kq_desktop
