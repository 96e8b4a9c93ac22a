#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/base/export.h"

/// A question or a notice that waits for the user.

enum class EBoxIcon : std::uint8_t { Stop, QuestionMark, Info };
enum class EBoxButtons : std::uint8_t { Ok, YesNo, YesNoCancel };
/// The answers, under the toolkit's codes.
enum class EBoxAnswer : std::uint32_t { Ok = 4, Cancel = 5, Yes = 6, No = 7 };

struct TMessageBox {
    std::string title;
    std::array<std::string, 3> lines;
    EBoxIcon icon = EBoxIcon::Info;
    EBoxButtons buttons = EBoxButtons::Ok;
};

using TMessageBoxHandler = std::function<EBoxAnswer(const TMessageBox &)>;

/// Installs what answers message boxes, and gives what did so before. Without a handler every box is answered by its
/// last button at once.
KQ_API TMessageBoxHandler SetMessageBoxHandler(TMessageBoxHandler handler);

/// Shows a box and gives the answer.
KQ_API EBoxAnswer DoMessageBox2(const TMessageBox &box);
