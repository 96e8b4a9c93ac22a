#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/base/export.h"

/// A question or a notice that waits for the user.

enum class TBoxIcon : std::uint8_t { kStop, kQuestionMark, kInfo };
enum class TBoxButtons : std::uint8_t { kOk, kYesNo, kYesNoCancel };
/// The answers, under the toolkit's codes.
enum class TBoxAnswer : std::uint32_t { kOk = 4, kCancel = 5, kYes = 6, kNo = 7 };

struct TMessageBox {
    std::string title;
    std::array<std::string, 3> lines;
    TBoxIcon icon = TBoxIcon::kInfo;
    TBoxButtons buttons = TBoxButtons::kOk;
};

using TMessageBoxHandler = std::function<TBoxAnswer(const TMessageBox &)>;

/// Installs what answers message boxes, and gives what did so before. Without a handler every box is answered by its
/// last button at once.
KQ_API TMessageBoxHandler SetMessageBoxHandler(TMessageBoxHandler handler);

/// Shows a box and gives the answer.
KQ_API TBoxAnswer DoMessageBox2(const TMessageBox &box);
/// True while a box waits for its answer.
bool IsMessageBoxShown();
