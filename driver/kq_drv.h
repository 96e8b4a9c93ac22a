#pragma once

/// Access to driver modules: the public header of the namespace kq_drv.
#include "driver/channel_map.h"
