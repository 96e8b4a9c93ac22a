#pragma once

#include <string>

#include "configurator/kq_cfg.h"

/// Reads files that were written and compares. A parameter file has no escapes, so it can't hold every value that a
/// person may enter: gives what is lost, in UTF-8, or an empty text if all comes back. Messages that the files gave
/// before they were edited are no loss.
std::string ReadBackLoss(const kq_cfg::TOptions &options, const kq_cfg::TReport &before, const std::string &pdt,
                         const std::string &par, const std::string &dmf);
