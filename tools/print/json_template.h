#pragma once

#include "configurator/kq_cfg.h"
#include "tools/print/json_text.h"

/// All that a template declares.
TJson TemplateJson(const kq_cfg::TTemplate &declared);
