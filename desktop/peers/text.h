#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Text between the toolkit, which holds bytes in code page 1250, and Qt. A byte is one character of a QString, so
/// offsets are the same on both sides.
namespace kq_desktop {

QString ToQt(std::string_view bytes);
/// The same with pictures in place of control characters but the tab, which Qt would take for the end of a line or
/// drop.
QString ToQtVisible(std::string_view bytes);
/// Back again; pictures become the control characters that they show. A character that the code page lacks becomes `?`,
/// and `lossy` true if it is given.
std::string FromQt(const QString &text, bool *lossy = nullptr);

}  // namespace kq_desktop
