// The search for devices by the driver's module.

#include "configurator/window_state.h"

namespace kq_pdt {

void CWindowSession::SearchDevices() {}

}  // namespace kq_pdt
