// What the items of the sheet's model show.

#include <QBrush>
#include <QColor>
#include <QFont>

#include "desktop/peers/advice.h"
#include "desktop/peers/icons.h"
#include "desktop/peers/sheet_model.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

namespace {

/// In place of the toolkit's symbol, which is in a font of its own.
QString DisabledText() { return QStringLiteral("—"); }

/// A colour of the toolkit: blue, green, red from the high byte to the low one.
QColor ColorOf(std::uint32_t number) {
    return QColor(static_cast<int>(number & 0xFFU), static_cast<int>(number >> 8U & 0xFFU),
                  static_cast<int>(number >> 16U & 0xFFU));
}

}  // namespace

std::uint32_t CSheetModel::CellsOf(const TPlace &place) const {
    // The row that adds others is used by its first cell.
    const bool adds = place.row > sheet_.RowCount(place.table);
    return adds ? 1 : static_cast<std::uint32_t>(sheet_.Columns(place.table).size());
}

Qt::ItemFlags CSheetModel::flags(const QModelIndex &index) const {
    const TPlace place = PlaceOf(index);
    if (place.table == 0) {
        return Qt::NoItemFlags;
    }
    if (place.IsHeading()) {
        return Qt::ItemNeverHasChildren;
    }
    if (place.column > CellsOf(place)) {
        // Nothing is there, but the way along a column leads through it: whoever comes here means the row's last cell.
        return Qt::ItemIsEnabled;
    }
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (sheet_.CanEdit(place.table, place.row, place.column)) {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

QVariant CSheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const auto &columns = sheet_.Columns(kRoot);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        static_cast<std::size_t>(section) >= columns.size()) {
        return {};
    }
    return ToQt(columns[static_cast<std::size_t>(section)].text.View());
}

QVariant CSheetModel::HeadingData(const TPlace &place, int role) const {
    const auto &columns = sheet_.Columns(place.table);
    if (role == kHeadingRole) {
        return true;
    }
    if (role != Qt::DisplayRole || place.column > columns.size()) {
        return {};
    }
    return ToQt(columns[place.column - 1].text.View());
}

QString CSheetModel::ToolTip(const TPlace &place, bool disabled) const {
    QStringList parts;
    if (disabled) {
        parts.append(advice_.CellReason(sheet_, place.table, place.row, place.column));
    }
    if (place.column == 1) {
        parts.append(advice_.RowProblem(sheet_, place.table, place.row));
    }
    parts.append(advice_.CellHelp(sheet_, place.table, place.row, place.column));
    parts.removeAll(QString());
    return parts.join(QLatin1Char('\n'));
}

QString CSheetModel::TitleOf(const TPlace &place) const {
    const QString row = ToQt(sheet_.ReadCell(place.table, place.row, 1).text.View());
    const QString heading = ToQt(sheet_.Columns(place.table)[place.column - 1].text.View());
    return place.column == 1 || heading.isEmpty() ? row : QStringLiteral("%1, %2").arg(row, heading);
}

/// For those who don't see the row and the heading of a cell; its name is what it shows. What can be edited is said in
/// words, since Qt gives the cells of a tree no state for it.
QString CSheetModel::Description(const TPlace &place, bool disabled) const {
    QString tip = ToolTip(place, disabled);
    if (place.column == 1) {
        return tip;
    }
    QString title = TitleOf(place);
    if (sheet_.CanEdit(place.table, place.row, place.column)) {
        title += QStringLiteral(", lze upravit");
    }
    return tip.isEmpty() ? title : QStringLiteral("%1. %2").arg(title, tip);
}

QVariant CSheetModel::CellData(const TPlace &place, int role) const {
    const bool adds = place.row > sheet_.RowCount(place.table);
    switch (role) {
        case kAddRole:
            return adds;
        case kEditableRole:
            return sheet_.CanEdit(place.table, place.row, place.column);
        case Qt::DecorationRole:
            if (place.column == 1 && !adds && !advice_.RowProblem(sheet_, place.table, place.row).isEmpty()) {
                return LoadIcon(QStringLiteral("warning"));
            }
            return {};
        default:
            break;
    }
    const CSheetView::TCell cell = sheet_.ReadCell(place.table, place.row, place.column);
    switch (role) {
        case Qt::DisplayRole:
            return cell.disabled ? DisabledText() : ToQt(cell.text.View());
        case kDisabledRole:
            return cell.disabled;
        case Qt::ToolTipRole: {
            const QString tip = ToolTip(place, cell.disabled);
            return tip.isEmpty() ? QVariant() : QStringLiteral("<span>%1</span>").arg(tip.toHtmlEscaped());
        }
        case Qt::AccessibleDescriptionRole:
            return Description(place, cell.disabled);
        case Qt::StatusTipRole:
            return ToolTip(place, cell.disabled);
        case Qt::AccessibleTextRole:
            return cell.disabled ? QStringLiteral("nepřístupné") : ToQt(cell.text.View());
        case Qt::ForegroundRole:
            // Black is what text has anyway, and it isn't black on a dark display.
            return cell.color.value_or(0) != 0 ? QBrush(ColorOf(*cell.color)) : QVariant();
        case Qt::BackgroundRole:
            return cell.background ? QBrush(ColorOf(*cell.background)) : QVariant();
        default:
            return {};
    }
}

QVariant CSheetModel::data(const QModelIndex &index, int role) const {
    const TPlace place = PlaceOf(index);
    if (place.table == 0) {
        return {};
    }
    if (place.IsHeading()) {
        return HeadingData(place, role);
    }
    return place.column <= sheet_.Columns(place.table).size() ? CellData(place, role) : QVariant();
}

}  // namespace kq_desktop
