#pragma once

#include <QList>
#include <QString>
#include <string>

class QWidget;

namespace kq_desktop {

/// A file as it is, and as it is to be.
struct TComparison {
    QString name;
    std::string before;
    std::string after;
};

/// Shows what differs between texts, line by line; says which comments of theirs would be lost.
void ShowChanges(QWidget &parent, const QString &title, const QList<TComparison> &files);

/// The comments of a parameter file's text, in their order.
QStringList CommentsOf(const QString &text);

}  // namespace kq_desktop
