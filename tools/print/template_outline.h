#pragma once

#include <string>

#include "configurator/kq_cfg.h"

/// What a template declares, as an indented outline for people, in UTF-8.
std::string TemplateOutline(const kq_cfg::TTemplate &declared);
