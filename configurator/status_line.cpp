#include "configurator/status_line.h"

#include <algorithm>

#include "platform/view/window.h"

namespace kq_pdt {

CStatusLine::CStatusLine() {
    constexpr std::int32_t kMargin = 2;
    NewRect({0, 0, 0, GetTextD() + 2 * kMargin});
}

void CStatusLine::ShowHint(std::string_view text) { SetText(text.substr(0, std::min(text.find('\0'), kBound))); }

}  // namespace kq_pdt
