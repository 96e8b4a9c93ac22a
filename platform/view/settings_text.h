#pragma once

#include <string>
#include <string_view>

#include "platform/view/settings.h"

/// Settings as a text of printable ASCII that a person can read and edit: below each path in brackets its values, one a
/// line.
///
///     ; settings
///     [\driver config tool]
///     WinX=10
///     ; end
///
/// In paths and names the brackets, `=`, `;`, `%`, blanks at the ends and whatever isn't printable ASCII are written
/// as `%` and two hexadecimal digits. The last line is there to tell a text that was cut.

std::string SettingsText(const CMemorySettings::TPaths &paths);
/// False, with nothing in `paths`, if any line is none of these or the text was cut. Lines may end with CR LF. Of a
/// value given twice the last one counts.
bool ParseSettings(std::string_view text, CMemorySettings::TPaths &paths);
