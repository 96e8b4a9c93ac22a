#include "desktop/peers/text_peer.h"

#include <QTextBlock>
#include <algorithm>
#include <string>

#include "desktop/peers/advice.h"
#include "desktop/peers/text.h"
#include "desktop/peers/text_editor.h"

namespace kq_desktop {

CTextPeer::CTextPeer(CTextView &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {
    highlighter_.Read(view);
    auto *editor = new CTextEditor(highlighter_, [this] { ShowAll(); });
    editor->undo = [this] { view_.UserUndo(); };
    editor->redo = [this] { view_.UserRedo(); };
    editor->setAccessibleName(advice.NameOf(&view));
    SetWidget(editor);
    QObject::connect(editor->document(), &QTextDocument::contentsChange, editor,
                     [this](int position, int removed, int added) { DocumentChanged(position, removed, added); });
    QObject::connect(editor, &QPlainTextEdit::cursorPositionChanged, editor, [this] { CursorMoved(); });
    QObject::connect(editor, &QPlainTextEdit::selectionChanged, editor, [this] { CursorMoved(); });
    ShowAll();
}

CTextPeer::~CTextPeer() {
    if (Widget() != nullptr) {
        Editor().document()->disconnect(&Editor());
        Editor().disconnect(&Editor());
        Editor().Detach();
    }
}

CTextEditor &CTextPeer::Editor() const { return static_cast<CTextEditor &>(*Widget()); }

void CTextPeer::ShowMarks() { Editor().SetMarks(Advice().TextMarks(view_)); }

// Positions.

std::size_t CTextPeer::StartOf(std::size_t line) const {
    std::size_t offset = 0;
    return view_.FindOffset(static_cast<std::uint32_t>(line + 1), 1, offset) ? offset : view_.Text().size();
}

std::size_t CTextPeer::LineOf(std::size_t offset) const {
    std::size_t first = 0;
    std::size_t after = view_.LineCount();
    while (after - first > 1) {
        const std::size_t middle = first + (after - first) / 2;
        (StartOf(middle) <= offset ? first : after) = middle;
    }
    return first;
}

/// A line without its end.
std::string_view CTextPeer::LineText(std::size_t line) const {
    const std::size_t start = StartOf(line);
    const std::size_t end = line + 1 < view_.LineCount() ? StartOf(line + 1) : view_.Text().size();
    std::string_view text = view_.Text().substr(start, end - start);
    if (line + 1 < view_.LineCount()) {
        text.remove_suffix(1);
        if (text.ends_with('\r')) {
            text.remove_suffix(1);
        }
    }
    return text;
}

int CTextPeer::PositionOf(std::size_t offset) const {
    const std::size_t line = LineOf(offset);
    const QTextBlock block = Editor().document()->findBlockByNumber(static_cast<int>(line));
    const auto column = static_cast<int>(offset - StartOf(line));
    return block.isValid() ? block.position() + std::min(column, block.length() - 1) : 0;
}

std::size_t CTextPeer::OffsetOf(int position) const {
    const QTextBlock block = Editor().document()->findBlock(position);
    const auto line = static_cast<std::size_t>(std::max(block.blockNumber(), 0));
    return std::min(StartOf(line) + static_cast<std::size_t>(position - block.position()), view_.Text().size());
}

/// The line end that the text has around an offset.
std::string_view CTextPeer::LineEnd(std::size_t offset) const {
    const std::string_view text = view_.Text();
    std::size_t end = text.find('\n', std::min(offset, text.size()));
    if (end == std::string_view::npos) {
        end = text.rfind('\n');
    }
    return end != std::string_view::npos && end != 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

// What the view tells.

void CTextPeer::ReplaceBlocks(int first, int removed, std::size_t from_line, std::size_t to_line) {
    QTextDocument *document = Editor().document();
    const CSyncing syncing(syncing_);
    QString lines;
    for (std::size_t line = from_line; line < to_line; ++line) {
        if (line != from_line) {
            lines += QLatin1Char('\n');
        }
        lines += ToQtVisible(LineText(line));
    }
    const QTextBlock begin = document->findBlockByNumber(first);
    const QTextBlock end = document->findBlockByNumber(first + removed - 1);
    QTextCursor cursor(begin);
    cursor.setPosition(end.position() + end.length() - 1, QTextCursor::KeepAnchor);
    cursor.insertText(lines);
}

void CTextPeer::ShowAll() {
    if (!stale_ || syncing_) {
        return;
    }
    stale_ = false;
    QTextDocument *document = Editor().document();
    const std::size_t lines = view_.LineCount();
    const auto blocks = static_cast<std::size_t>(document->blockCount());
    // What is equal at both ends stays, with its colours and its place on the screen.
    std::size_t head = 0;
    for (QTextBlock block = document->begin(); head < std::min(lines, blocks); block = block.next(), ++head) {
        if (block.text() != ToQtVisible(LineText(head))) {
            break;
        }
    }
    std::size_t tail = 0;
    for (QTextBlock block = document->lastBlock(); tail < std::min(lines, blocks) - head; block = block.previous()) {
        if (block.text() != ToQtVisible(LineText(lines - 1 - tail))) {
            break;
        }
        ++tail;
    }
    if (head == 0 && tail == 0) {
        const CSyncing syncing(syncing_);
        QString text;
        text.reserve(static_cast<qsizetype>(view_.Text().size()));
        for (std::size_t line = 0; line < lines; ++line) {
            text += ToQtVisible(LineText(line));
            if (line + 1 < lines) {
                text += QLatin1Char('\n');
            }
        }
        Editor().setPlainText(text);
    } else if (head + tail < std::max(lines, blocks)) {
        // At least one line stays to be replaced on either side.
        if (head + tail == std::min(lines, blocks)) {
            head > 0 ? --head : --tail;
        }
        ReplaceBlocks(static_cast<int>(head), static_cast<int>(blocks - head - tail), head, lines - tail);
    }
    ShowCursor();
    ShowMarks();
}

void CTextPeer::ShowPiece(const TViewNotice &notice) {
    if (stale_) {
        return;
    }
    const std::size_t first = LineOf(notice.first);
    const std::size_t lines = view_.LineCount();
    const std::size_t tail = lines - 1 - LineOf(notice.first + notice.inserted);
    const auto blocks = static_cast<std::size_t>(Editor().document()->blockCount());
    if (first + tail >= blocks) {
        stale_ = true;
        Editor().viewport()->update();
        return;
    }
    ReplaceBlocks(static_cast<int>(first), static_cast<int>(blocks - first - tail), first, lines - tail);
}

void CTextPeer::ShowCursor() {
    if (stale_) {
        return;
    }
    const CSyncing syncing(syncing_);
    QTextCursor cursor = Editor().textCursor();
    const int anchor = PositionOf(view_.AnchorOffset());
    const int position = PositionOf(view_.CursorOffset());
    if (cursor.anchor() != anchor || cursor.position() != position) {
        cursor.setPosition(anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        Editor().setTextCursor(cursor);
    }
}

void CTextPeer::ColorAnew() {
    highlighter_.Read(view_);
    Editor().ColorAnew();
}

void CTextPeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kContent || notice.change == TViewChange::kText) {
        ++changes_;
    }
    switch (notice.change) {
        case TViewChange::kContent:
            stale_ = true;
            Editor().viewport()->update();
            break;
        case TViewChange::kText:
            if (!syncing_) {
                ShowPiece(notice);
            }
            break;
        case TViewChange::kCursor:
        case TViewChange::kSelection:
            if (!syncing_) {
                ShowCursor();
            }
            break;
        case TViewChange::kFitCursor:
            ShowAll();
            Editor().centerCursor();
            break;
        case TViewChange::kColors:
            ColorAnew();
            break;
        default:
            break;
    }
}

// What a person does.

void CTextPeer::DocumentChanged(int position, int removed, int added) {
    if (syncing_) {
        return;
    }
    QTextDocument *document = Editor().document();
    const int end = std::min(position + added, document->characterCount() - 1);
    std::size_t offset = OffsetOf(position);
    std::size_t length = 0;
    const std::string_view text = view_.Text();
    for (; removed > 0 && offset + length < text.size(); --removed) {
        length += text.substr(offset + length, 2) == "\r\n" ? 2U : 1U;
    }
    QTextCursor cursor(document);
    cursor.setPosition(position);
    cursor.setPosition(std::max(end, position), QTextCursor::KeepAnchor);
    bool lossy = false;
    std::string inserted;
    const std::string_view line_end = LineEnd(offset);
    for (const QChar character : cursor.selectedText()) {
        if (character == QChar::ParagraphSeparator || character == QChar::LineSeparator) {
            inserted += line_end;
        } else {
            inserted += FromQt(character, &lossy);
        }
    }
    // Qt may name more than what changed.
    while (length != 0 && !inserted.empty() && text[offset] == inserted.front()) {
        ++offset;
        --length;
        inserted.erase(0, 1);
    }
    while (length != 0 && !inserted.empty() && text[offset + length - 1] == inserted.back()) {
        --length;
        inserted.pop_back();
    }
    if (length == 0 && inserted.empty()) {
        return;
    }
    const CSyncing syncing(syncing_);
    const bool typed = length == 0 && inserted.size() == 1;
    if (!view_.UserReplaceAt(offset, length, inserted, typed) || lossy) {
        stale_ = true;
        Editor().viewport()->update();
    }
}

void CTextPeer::CursorMoved() {
    if (syncing_ || stale_) {
        return;
    }
    const CSyncing syncing(syncing_);
    const QTextCursor cursor = Editor().textCursor();
    const std::size_t anchor = OffsetOf(cursor.anchor());
    const std::size_t position = OffsetOf(cursor.position());
    if (anchor != view_.AnchorOffset() || position != view_.CursorOffset()) {
        view_.UserSelect(anchor, position);
    }
}

}  // namespace kq_desktop
