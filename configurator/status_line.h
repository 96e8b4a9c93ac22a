#pragma once

#include <string_view>

#include "platform/view/labels.h"

namespace kq_pdt {

/// The line at the window's foot: what the template says about the cell that is edited.
class CStatusLine final : public CStaticText {
public:
    /// The most characters that are shown.
    static constexpr std::size_t kBound = 511;

    CStatusLine();

    void ShowHint(std::string_view text);
};

}  // namespace kq_pdt
