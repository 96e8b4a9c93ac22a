#include "configurator/disabled_reason.h"

namespace kq_pdt {

std::string DisabledReason(CSectionDef & /*section*/, CKeyDef * /*key*/, std::uint32_t /*cell*/) { return {}; }

}  // namespace kq_pdt
