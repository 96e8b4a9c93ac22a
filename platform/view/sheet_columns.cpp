#include <set>

#include "platform/view/settings.h"
#include "platform/view/sheet_view.h"

namespace {

std::string WidthName(std::string_view form, std::size_t column) {
    return std::string(form) + '.' + std::to_string(column);
}

}  // namespace

void CSheetView::DescribeColumn(std::uint32_t table, std::string_view text, std::uint32_t mode, std::uint32_t width,
                                std::uint32_t least_width, std::uint32_t greatest_width) {
    const auto found = tables_.find(table);
    if (found == tables_.end()) {
        return;
    }
    found->second.columns.push_back({kq_base::TText(text), mode, width, least_width, greatest_width});
    ReadWidths(found->second.form, found->second.columns.size());
}

const std::vector<CSheetView::TColumn> &CSheetView::Columns(std::uint32_t table) {
    static const std::vector<TColumn> kNone;
    const auto found = tables_.find(table);
    if (found == tables_.end()) {
        return kNone;
    }
    std::vector<TColumn> &columns = found->second.columns;
    for (std::size_t index = 0; index < columns.size(); ++index) {
        DS_ReadColumn(table, static_cast<std::uint32_t>(index + 1), columns[index]);
    }
    return columns;
}

std::uint32_t CSheetView::ColumnWidth(std::uint32_t table, std::uint32_t column) const {
    const auto found = tables_.find(table);
    if (found == tables_.end() || column == 0 || column > found->second.columns.size()) {
        return 0;
    }
    const auto widths = widths_.find(found->second.form);
    const std::uint32_t given = widths->second[column - 1];
    return given != 0 ? given : found->second.columns[column - 1].width;
}

/// Makes room for a form's columns and reads those that are new.
void CSheetView::ReadWidths(const std::string &form, std::size_t columns) {
    TWidths &widths = widths_[form];
    CSettings settings;
    const bool stored = widths.size() < columns && !settings_path_.empty() && settings.Open(settings_path_);
    while (widths.size() < columns) {
        std::uint32_t width = 0;
        if (stored) {
            settings.ReadUnsigned(WidthName(form, widths.size() + 1), width);
        }
        widths.push_back(width);
    }
}

void CSheetView::RegistryReadSettings(std::string_view path) {
    settings_path_ = path;
    CSettings settings;
    if (!settings.Open(path)) {
        return;
    }
    for (auto &[form, widths] : widths_) {
        for (std::size_t index = 0; index < widths.size(); ++index) {
            settings.ReadUnsigned(WidthName(form, index + 1), widths[index]);
        }
    }
    Changed(TViewChange::kArea);
}

void CSheetView::RegistryWriteSettings(std::string_view path) const {
    CSettings settings;
    settings.Create(path);
    std::set<std::string_view> written;
    for (const auto &[id, table] : tables_) {
        if (!written.insert(table.form).second) {
            continue;
        }
        for (std::size_t index = 0; index < table.columns.size(); ++index) {
            const auto column = static_cast<std::uint32_t>(index + 1);
            settings.WriteUnsigned(WidthName(table.form, column), ColumnWidth(id, column));
        }
    }
    // The tables of a form may be gone; what a person gave to them counts for those to come.
    for (const auto &[form, widths] : widths_) {
        for (std::size_t index = 0; index < widths.size(); ++index) {
            if (widths[index] != 0) {
                settings.WriteUnsigned(WidthName(form, index + 1), widths[index]);
            }
        }
    }
}

void CSheetView::UserSizeColumn(std::uint32_t table, std::uint32_t column, std::uint32_t width) {
    const auto found = tables_.find(table);
    if (found == tables_.end() || column == 0 || column > found->second.columns.size()) {
        return;
    }
    widths_[found->second.form][column - 1] = width;
    Changed({.change = TViewChange::kArea, .table = table, .column = column});
}
