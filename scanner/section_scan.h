#pragma once

#include "scanner/scanned_text.h"
#include "scanner/tape_reader.h"

namespace par_scanner::detail {

/// Finds the sections, from the tape's place to the end of the text, where it leaves the tape. The tape must be laid
/// in.
void ScanSections(TScannedText &text, CTapeReader &tape);

}  // namespace par_scanner::detail
