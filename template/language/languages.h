#pragma once

#include <array>
#include <string_view>

namespace kq_pdt {

/// The languages that a host can have, in the order of their numbers from 0, each under the tag that marks its texts in
/// a template.
inline constexpr std::array<std::string_view, 4> kLanguages = {"CZ", "EN", "GE", "JP"};

}  // namespace kq_pdt
