#pragma once

#include <cstdint>
#include <string_view>

#include "platform/base/export.h"
#include "scanner/par_scanner.h"

namespace par_scanner {

/// Reads a text in memory.
class KQ_API CTextParScanner final : public CParScanner {
public:
    /// Copies the text and finds its sections: the first operation is FirstSection or GetFirstSection. Where memory is
    /// short there is no section.
    explicit CTextParScanner(std::string_view text);
    std::uint32_t GetDataSize() override { return static_cast<std::uint32_t>(text_.size()); }
    bool ReadBlockData(TStr0_ *buffer) override;

private:
    std::string_view text_;  ///< only while the constructor runs
};

}  // namespace par_scanner
