#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/base/export.h"

/// A question or a notice that waits for the user.

enum class EBoxIcon : std::uint8_t { stop, questionMark, info };
enum class EBoxButtons : std::uint8_t { ok, yesNo, yesNoCancel };
/// The answers, under the toolkit's codes.
enum class EBoxAnswer : std::uint32_t { ok = 4, cancel = 5, yes = 6, no = 7 };

struct TMessageBox {
    std::string title;
    std::array<std::string, 3> lines;
    EBoxIcon icon = EBoxIcon::info;
    EBoxButtons buttons = EBoxButtons::ok;
};

using TMessageBoxHandler = std::function<EBoxAnswer(const TMessageBox &)>;

/// Installs what answers message boxes, and gives what did so before. Without a handler every box is answered by its
/// last button at once.
KQ_API TMessageBoxHandler SetMessageBoxHandler(TMessageBoxHandler handler);

/// Shows a box and gives the answer.
KQ_API EBoxAnswer DoMessageBox2(const TMessageBox &box);
