#pragma once

#include "configurator/kq_cfg.h"
#include "tools/print/json_text.h"

TJson ValueJson(const kq_cfg::TValue &value);
/// An object with a key for each variable.
TJson VariablesJson(const kq_cfg::TVariables &variables);
TJson ExprJson(const kq_cfg::TExpr &expression);
