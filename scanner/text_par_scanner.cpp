#include "scanner/text_par_scanner.h"

namespace par_scanner {

CTextParScanner::CTextParScanner(std::string_view text) : text_(text) {
    Init(0);
    text_ = {};
}

bool CTextParScanner::ReadBlockData(TStr0_ *buffer) {
    text_.copy(buffer, text_.size());
    return true;
}

}  // namespace par_scanner
