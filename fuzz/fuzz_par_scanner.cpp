// The parameter file scanner over any bytes: all that it finds beside the plain rules, and the parts that aren't read.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanner/unread_text.h"
#include "tests/scanner/reference_scanner.h"
#include "tests/scanner/surface_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr std::size_t kLongest = 4096;  // the plain rules take the square of a text whose headers follow comments
    const std::string_view text(reinterpret_cast<const char *>(data), size < kLongest ? size : kLongest);
    par_scanner::CTextParScanner scanner(text);
    CReferenceScanner reference(text);
    if (SurfaceText(scanner, true) != SurfaceText(reference, true)) {
        std::abort();
    }
    for (const par_scanner::TUnreadText &unread : par_scanner::FindUnreadText(text)) {
        if (unread.line == 0 || unread.column == 0) {
            std::abort();
        }
    }
    return 0;
}
