#pragma once

#include <QString>
#include <QWidget>

class QListWidget;

namespace kq_desktop {

/// What is shown without a file: the files that were opened last, and ways to open another one.
class CStartPage final : public QWidget {
public:
    CStartPage();

    /// Shows the page until a file is chosen; empty if it was closed.
    static QString Ask();
    const QString &Chosen() const { return chosen_; }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Choose(const QString &path);
    void AskForFile();

    QListWidget *recent_;
    QString chosen_;
};

}  // namespace kq_desktop
