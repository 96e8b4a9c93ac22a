#pragma once

#include "scanner/scanned_text.h"
#include "scanner/tape_reader.h"

namespace par_scanner::detail {

/// Reads the keys of a section, and with them those of the sections that it is joined to, and leaves the tape where
/// that reading ended.
void LoadKeys(TScannedText &text, CTapeReader &tape, CSection &section);

}  // namespace par_scanner::detail
