#pragma once

#include <string_view>

#include "platform/view/message_box.h"

namespace kq_pdt {

/// A question or a notice with up to three lines.
TMessageBox MakeBox(std::string_view title, std::string_view line1, std::string_view line2, std::string_view line3,
                    TBoxIcon icon, TBoxButtons buttons);
/// Asks Yes or No; true for an explicit Yes.
bool AskYesNo(std::string_view title, std::string_view line1, std::string_view line2, std::string_view line3,
              TBoxIcon icon = TBoxIcon::kQuestionMark);
/// Shows a box with the stop icon and OK.
void ShowStop(std::string_view title, std::string_view line1, std::string_view line2, std::string_view line3 = {});

}  // namespace kq_pdt
