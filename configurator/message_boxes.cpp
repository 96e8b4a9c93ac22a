#include "configurator/message_boxes.h"

namespace kq_pdt {

TMessageBox MakeBox(std::string_view title, std::string_view line1, std::string_view line2, std::string_view line3,
                    TBoxIcon icon, TBoxButtons buttons) {
    return {std::string(title), {std::string(line1), std::string(line2), std::string(line3)}, icon, buttons};
}

bool AskYesNo(std::string_view title, std::string_view line1, std::string_view line2, std::string_view line3,
              TBoxIcon icon) {
    return DoMessageBox2(MakeBox(title, line1, line2, line3, icon, TBoxButtons::kYesNo)) == TBoxAnswer::kYes;
}

void ShowStop(std::string_view title, std::string_view line1, std::string_view line2, std::string_view line3) {
    DoMessageBox2(MakeBox(title, line1, line2, line3, TBoxIcon::kStop, TBoxButtons::kOk));
}

}  // namespace kq_pdt
