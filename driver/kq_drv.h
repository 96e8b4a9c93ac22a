#pragma once

/// Access to driver modules: the public header of the namespace kq_drv.
#include "driver/channels/channel_map.h"
#include "driver/component_helper.h"
#include "driver/driver_proxy.h"
#include "driver/value_string.h"
