#include "scanner/view_par_scanner.h"

#include <cstring>

#include "platform/view/text_view.h"

namespace par_scanner {

bool CViewParScanner::Init(const CTextView *view, std::uint32_t source) {
    block_ = nullptr;
    size_ = 0;
    if (view != nullptr) {
        view->GetTextBlock(block_, size_);
    }
    const bool read = CParScanner::Init(source);
    block_ = nullptr;
    return read;
}

bool CViewParScanner::ReadBlockData(TStr0_ *buffer) {
    if (block_ == nullptr) {
        return false;
    }
    std::memcpy(buffer, block_, size_);
    return true;
}

}  // namespace par_scanner
