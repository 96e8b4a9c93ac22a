#pragma once

#include "scanner/scanned_text.h"
#include "scanner/tape_reader.h"

namespace par_scanner::detail {

/// Finds the sections from the tape's position on. The tape must be one of the text; it is left where the text or
/// its reading ends.
void ScanSections(TScannedText &text, CTapeReader &tape);

}  // namespace par_scanner::detail
