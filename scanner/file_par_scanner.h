#pragma once

#include <cstdint>
#include <string>

#include "platform/base/export.h"
#include "scanner/par_scanner.h"

namespace par_scanner {

/// Reads a file.
class KQ_API CFileParScanner : public CParScanner {
public:
    /// Takes a path of the library (platform/base/paths.h). False if the file can't be read; a directory can't.
    bool Init(const char *path, std::uint32_t source);
    std::uint32_t GetDataSize() override;
    bool ReadBlockData(TStr0_ *buffer) override;

private:
    std::string content_;  ///< only while Init runs
};

}  // namespace par_scanner
