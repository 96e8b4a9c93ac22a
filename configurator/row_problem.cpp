#include "configurator/row_problem.h"

namespace kq_pdt {

std::string SectionProblem(CSectionDef & /*section*/) { return {}; }

std::string KeyProblem(CSectionDef & /*section*/, CKeyDef & /*key*/) { return {}; }

}  // namespace kq_pdt
