#pragma once

#include <string>

#include "configurator/kq_cfg.h"

/// A value as a person writes it: 5, 'text', true, nedef. UTF-8.
std::string ValueText(const kq_cfg::TValue &value);
/// An expression as the template language writes it, with the parentheses that it needs. UTF-8.
std::string ExprText(const kq_cfg::TExpr &expression);
/// A text in single quotes, each quote in it doubled. UTF-8.
std::string QuotedText(std::string_view text);
