#include "desktop/peers/text_editor.h"

#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "desktop/peers/qt_peer.h"

namespace kq_desktop {

namespace {

class CGutter final : public QWidget {
public:
    explicit CGutter(CTextEditor &editor) : QWidget(&editor), editor_(editor) {}

protected:
    void paintEvent(QPaintEvent *event) override { editor_.PaintGutter(*event); }

private:
    CTextEditor &editor_;
};

constexpr int kGutterMargin = 8;
constexpr int kMarkWidth = 10;

/// Selects what a message is about: the word at a column or the last one before it, otherwise the line. A message comes
/// with the place at which the reading was, which may be after the comma.
void MarkWord(QTextCursor &cursor, int column) {
    const QString text = cursor.block().text();
    const auto is_word = [&text](qsizetype at) {
        return at >= 0 && at < text.size() && !text[at].isSpace() && text[at] != QLatin1Char(',');
    };
    qsizetype begin = qMin<qsizetype>(column - 1, text.size());
    while (column != 0 && begin > 0 && !is_word(begin) && !is_word(begin - 1)) {
        --begin;
    }
    qsizetype end = begin;
    while (column != 0 && is_word(begin - 1)) {
        --begin;
    }
    while (column != 0 && is_word(end)) {
        ++end;
    }
    if (begin >= end || text.isEmpty()) {
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        return;
    }
    const int start = cursor.block().position();
    cursor.setPosition(start + static_cast<int>(begin));
    cursor.setPosition(start + static_cast<int>(end), QTextCursor::KeepAnchor);
}

QColor MarkColor(bool error) { return error ? QColor(0xD3, 0x2F, 0x2F) : QColor(0xE0, 0x9B, 0x00); }

}  // namespace

CTextEditor::CTextEditor(CTextHighlighter &highlighter, std::function<void()> before)
    : highlighter_(highlighter), before_(std::move(before)), gutter_(new CGutter(*this)) {
    setUndoRedoEnabled(false);
    setLineWrapMode(NoWrap);
    setFrameShape(NoFrame);
    QFont font(QStringLiteral("monospace"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(this->font().pointSizeF());
    setFont(font);
    setTabStopDistance(8 * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    connect(this, &QPlainTextEdit::blockCountChanged, this, [this] { PlaceGutter(); });
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect &area, int moved) {
        if (moved != 0) {
            gutter_->scroll(0, moved);
        } else {
            gutter_->update(0, area.y(), gutter_->width(), area.height());
        }
    });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { UpdateSelections(); });
    connect(document(), &QTextDocument::contentsChange, this, [this](int from, int /*removed*/, int added) {
        for (QTextBlock block = document()->findBlock(from); block.isValid() && block.position() <= from + added;
             block = block.next()) {
            block.setUserData(nullptr);
        }
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { ColorVisible(); });
    PlaceGutter();
    UpdateSelections();
}

void CTextEditor::Detach() {
    before_ = [] {};
    undo = [] {};
    redo = [] {};
    coloring_ = true;
}

bool CTextEditor::event(QEvent *event) {
    const auto type = event->type();
    if (type == QEvent::KeyPress || type == QEvent::FocusIn || type == QEvent::InputMethod || type == QEvent::Show) {
        before_();
    }
    return QPlainTextEdit::event(event);
}

bool CTextEditor::viewportEvent(QEvent *event) {
    switch (event->type()) {
        case QEvent::Paint:
            before_();
            ColorVisible();
            break;
        case QEvent::MouseButtonPress:
        case QEvent::Drop:
            before_();
            break;
        case QEvent::ToolTip:
            if (ShowMarkTip(*event)) {
                return true;
            }
            break;
        default:
            break;
    }
    return QPlainTextEdit::viewportEvent(event);
}

void CTextEditor::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Undo)) {
        undo();
    } else if (event->matches(QKeySequence::Redo)) {
        redo();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void CTextEditor::contextMenuEvent(QContextMenuEvent *event) {
    QMenu menu(this);
    const bool selected = textCursor().hasSelection();
    menu.addAction(QStringLiteral("&Zpět"), QKeySequence::Undo, this, [this] { undo(); });
    menu.addAction(QStringLiteral("Z&novu"), QKeySequence::Redo, this, [this] { redo(); });
    menu.addSeparator();
    menu.addAction(QStringLiteral("&Vyjmout"), QKeySequence::Cut, this, [this] { cut(); })->setEnabled(selected);
    menu.addAction(QStringLiteral("&Kopírovat"), QKeySequence::Copy, this, [this] { copy(); })->setEnabled(selected);
    menu.addAction(QStringLiteral("V&ložit"), QKeySequence::Paste, this, [this] { paste(); })->setEnabled(canPaste());
    menu.addSeparator();
    menu.addAction(QStringLiteral("Vybrat vš&e"), QKeySequence::SelectAll, this, [this] { selectAll(); });
    menu.exec(event->globalPos());
}

void CTextEditor::resizeEvent(QResizeEvent *event) {
    QPlainTextEdit::resizeEvent(event);
    PlaceGutter();
    ColorVisible();
}

int CTextEditor::GutterWidth() const {
    int digits = 3;
    for (int lines = blockCount(); lines >= 1000; lines /= 10) {
        ++digits;
    }
    return digits * fontMetrics().horizontalAdvance(QLatin1Char('9')) + kGutterMargin + kMarkWidth;
}

void CTextEditor::PlaceGutter() {
    setViewportMargins(GutterWidth(), 0, 0, 0);
    const QRect area = contentsRect();
    gutter_->setGeometry(area.left(), area.top(), GutterWidth(), area.height());
}

void CTextEditor::PaintGutter(QPaintEvent & /*event*/) {
    QPainter painter(gutter_);
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    painter.fillRect(gutter_->rect(), base.lightness() > 128 ? base.darker(104) : base.lighter(130));
    QColor dim = text;
    dim.setAlpha(110);
    painter.setFont(font());
    const int current = textCursor().blockNumber();
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF area = blockBoundingGeometry(block).translated(contentOffset());
        if (area.top() > gutter_->height()) {
            break;
        }
        const int line = block.blockNumber();
        painter.setPen(line == current ? text : dim);
        painter.drawText(
            QRectF(kMarkWidth, area.top(), gutter_->width() - kMarkWidth - kGutterMargin / 2.0, fontMetrics().height()),
            Qt::AlignRight | Qt::AlignVCenter, QString::number(line + 1));
        const auto mark = std::find_if(marks_.begin(), marks_.end(), [line](const TTextMark &other) {
            return static_cast<int>(other.line) == line + 1;
        });
        if (mark != marks_.end()) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(MarkColor(mark->error));
            const double size = kMarkWidth - 3;
            painter.drawEllipse(QRectF(2, area.top() + (fontMetrics().height() - size) / 2, size, size));
        }
    }
}

void CTextEditor::SetMarks(std::vector<TTextMark> marks) {
    marks_ = std::move(marks);
    UpdateSelections();
    gutter_->update();
}

void CTextEditor::UpdateSelections() {
    QList<QTextEdit::ExtraSelection> selections;
    QTextEdit::ExtraSelection line;
    QColor tint = palette().color(QPalette::Highlight);
    tint.setAlpha(24);
    line.format.setBackground(tint);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    line.cursor = textCursor();
    line.cursor.clearSelection();
    selections.append(line);
    for (const TTextMark &mark : marks_) {
        const QTextBlock block = document()->findBlockByNumber(static_cast<int>(mark.line) - 1);
        if (!block.isValid()) {
            continue;
        }
        QTextEdit::ExtraSelection wave;
        wave.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        wave.format.setUnderlineColor(MarkColor(mark.error));
        wave.cursor = QTextCursor(block);
        MarkWord(wave.cursor, static_cast<int>(mark.column));
        selections.append(wave);
    }
    setExtraSelections(selections);
    gutter_->update();
}

bool CTextEditor::ShowMarkTip(QEvent &event) {
    const auto &help = static_cast<QHelpEvent &>(event);
    const int line = cursorForPosition(help.pos()).blockNumber() + 1;
    QStringList messages;
    for (const TTextMark &mark : marks_) {
        if (static_cast<int>(mark.line) == line) {
            messages.append(mark.message.toHtmlEscaped());
        }
    }
    if (messages.isEmpty()) {
        QToolTip::hideText();
        return false;
    }
    QToolTip::showText(help.globalPos(), QStringLiteral("<span>%1</span>").arg(messages.join(QStringLiteral("<br>"))));
    return true;
}

void CTextEditor::ColorAnew() {
    ++generation_;
    viewport()->update();
}

void CTextEditor::ColorVisible() {
    if (coloring_) {
        return;
    }
    const CSyncing coloring(coloring_);
    const int height = viewport()->height();
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        if (blockBoundingGeometry(block).translated(contentOffset()).top() > height) {
            break;
        }
        const auto *seen = static_cast<CColored *>(block.userData());
        if (seen == nullptr || seen->generation != generation_) {
            block.layout()->setFormats(highlighter_.Formats(block.text(), palette()));
            block.setUserData(new CColored(generation_));
            document()->markContentsDirty(block.position(), block.length());
        }
    }
}

}  // namespace kq_desktop
