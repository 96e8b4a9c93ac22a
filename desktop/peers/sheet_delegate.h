#pragma once

#include <QStyledItemDelegate>

class QPalette;

namespace kq_desktop {

/// Paints the cells of a sheet: values that can be edited lie in a field, headings in a darker row, what is disabled is
/// dim.
class CSheetDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static QColor HeadingColor(const QPalette &palette);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    static void PaintField(QPainter &painter, const QStyleOptionViewItem &option);
};

}  // namespace kq_desktop
