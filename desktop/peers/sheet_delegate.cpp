#include "desktop/peers/sheet_delegate.h"

#include <QPainter>
#include <QPalette>

#include "desktop/peers/colors.h"
#include "desktop/peers/sheet_model.h"

namespace kq_desktop {

namespace {

/// Units above and below the text of a row.
constexpr int kMargin = 4;

}  // namespace

QColor CSheetDelegate::HeadingColor(const QPalette &palette) {
    return Mix(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.07);
}

void CSheetDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const QColor text = option->palette.color(QPalette::Active, QPalette::Text);
    const QColor base = option->palette.color(QPalette::Active, QPalette::Base);
    if (index.data(CSheetModel::kHeadingRole).toBool()) {
        // Headings aren't to be selected, so Qt takes them for disabled.
        option->palette.setColor(QPalette::Disabled, QPalette::Text, Mix(text, base, 0.25));
        option->font.setBold(true);
        option->font.setPointSizeF(option->font.pointSizeF() * 0.92);
        option->state &= ~QStyle::State_Selected;
    } else if (index.data(CSheetModel::kDisabledRole).toBool()) {
        option->palette.setColor(QPalette::Text, Dim(base, text, 0.45));
    } else if (index.data(CSheetModel::kAddRole).toBool()) {
        option->palette.setColor(QPalette::Text, option->palette.color(QPalette::Link));
        option->font.setItalic(true);
    }
    option->textElideMode = Qt::ElideRight;
}

void CSheetDelegate::PaintField(QPainter &painter, const QStyleOptionViewItem &option) {
    const QColor base = option.palette.color(QPalette::Active, QPalette::Base);
    const QColor text = option.palette.color(QPalette::Active, QPalette::Text);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Dim(base, text, 0.22));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5), 3, 3);
    painter.restore();
}

void CSheetDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const {
    QStyledItemDelegate::paint(painter, option, index);
    if (index.column() > 0 && index.data(CSheetModel::kEditableRole).toBool()) {
        PaintField(*painter, option);
    }
}

QSize CSheetDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex & /*index*/) const {
    // All rows are equally high, so that the height of a long tree needs no look at each.
    return {100, option.fontMetrics.height() + 2 * kMargin};
}

}  // namespace kq_desktop
