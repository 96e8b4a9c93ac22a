#pragma once

#include <cstdint>
#include <string>

#include "model/section_def.h"

namespace kq_pdt {

/// Why a cell is disabled, as a text for people: the condition as the template has it, then the present value of each
/// variable in it with the label of the value that sets it. Empty for a cell that isn't disabled or doesn't exist. key
/// null: a cell of the section's name. Cells count from 1 over name and values of the node.
std::string DisabledReason(CSectionDef &section, CKeyDef *key, std::uint32_t cell);

}  // namespace kq_pdt
