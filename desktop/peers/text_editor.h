#pragma once

#include <QPlainTextEdit>
#include <functional>
#include <vector>

#include "desktop/peers/advice.h"
#include "desktop/peers/text_highlighter.h"

namespace kq_desktop {

/// The editor widget of a text: line numbers, the current line, colours of what is in sight, places of messages. The
/// text's history isn't its own.
class CTextEditor final : public QPlainTextEdit {
public:
    /// `before` is called before anything that looks at the text or changes it.
    CTextEditor(CTextHighlighter &highlighter, std::function<void()> before);

    /// Ends what it has to do with others, which end now.
    void Detach();
    void SetMarks(std::vector<TTextMark> marks);
    /// Words or colours changed.
    void ColorAnew();
    /// The colours of what is in sight, where they aren't up to date.
    void ColorVisible();
    int GutterWidth() const;
    void PaintGutter(QPaintEvent &event);

    std::function<void()> undo;
    std::function<void()> redo;

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void UpdateSelections();
    void PlaceGutter();
    bool ShowMarkTip(QEvent &event);

    CTextHighlighter &highlighter_;
    std::function<void()> before_;
    QWidget *gutter_;
    std::vector<TTextMark> marks_;
    int generation_ = 1;
    bool coloring_ = false;
};

}  // namespace kq_desktop
