#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <cstdint>

/// What the toolkit's commands look like here: keys, letters in menus, icons.
namespace kq_desktop {

QList<QKeySequence> ShortcutsOf(std::uint32_t command);
/// A menu's text with a mark before the letter that chooses it.
QString WithMnemonic(const QString &text);
/// The name of an icon's file, by its number; empty for none.
QString IconNameOf(std::uint32_t icon);

}  // namespace kq_desktop
