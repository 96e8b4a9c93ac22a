#pragma once

#include <cstdint>

#include "platform/base/export.h"
#include "scanner/par_scanner.h"

class CTextView;

namespace par_scanner {

/// Reads the text of a text view. The text is copied: the view may change afterwards.
class KQ_API CViewParScanner : public CParScanner {
public:
    /// False without a view.
    bool Init(const CTextView *view, std::uint32_t source);
    std::uint32_t GetDataSize() override { return size_; }
    /// False if there is no text block.
    bool ReadBlockData(TStr0_ *buffer) override;

private:
    const char *block_ = nullptr;  ///< only while Init runs
    std::uint32_t size_ = 0;
};

}  // namespace par_scanner
