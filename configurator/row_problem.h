#pragma once

#include <string>

#include "model/section_def.h"

namespace kq_pdt {

/// Why a row, written to a parameter file, wouldn't be read back as it is, as a text for people: a value that the form
/// can't hold, a name that another row has, a text that the patterns cut differently. Empty where it would.
std::string SectionProblem(CSectionDef &section);
std::string KeyProblem(CSectionDef &section, CKeyDef &key);

}  // namespace kq_pdt
