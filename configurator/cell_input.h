#pragma once

#include <string>
#include <string_view>

#include "model/cell_editor.h"

namespace kq_pdt {

/// Puts a value into the control of an open editor as a person would who knows the parameter file: an entry of a list
/// is given by the text that the file holds, or by its label; the text for a missing value, or nothing at all, takes
/// an optional value away. False, with the reason, if the control doesn't take it.
bool EnterValue(TCellEditor &editor, std::string_view value, std::string &reason);

}  // namespace kq_pdt
