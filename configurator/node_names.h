#pragma once

#include <string>

#include "model/sheet_data.h"

namespace kq_pdt {

/// The texts that the names of instances show, and the one that a new instance of a definition would show.

std::string ShownName(CSectionDef &section);
std::string ShownName(CSectionDef &section, CKeyDef &key);
std::string NewNodeText(CDefNode &definition);

}  // namespace kq_pdt
