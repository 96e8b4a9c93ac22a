#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <functional>

class QFrame;
class QVBoxLayout;
class QWidget;

namespace kq_desktop {

/// Bars above the tabs that say something without stopping anybody. Each has a key; a new one of the same key takes the
/// place of the former.
class CNotices {
public:
    struct TButton {
        QString text;
        std::function<void()> action;
    };

    explicit CNotices(QVBoxLayout &place) : place_(place) {}

    void Show(const QString &key, const QString &text, const QList<TButton> &buttons);
    void Hide(const QString &key);
    /// The first button of each bar, for those who go there by keyboard.
    QList<QWidget *> FirstButtons() const;
    bool IsShown(const QString &key) const { return bars_.contains(key); }

private:
    QVBoxLayout &place_;
    QHash<QString, QFrame *> bars_;
};

}  // namespace kq_desktop
