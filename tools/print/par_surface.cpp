#include "tools/print/par_surface.h"

#include "scanner/text_par_scanner.h"

namespace {

TSurfaceKey ReadKey(par_scanner::CParScanner &scanner) {
    TSurfaceKey key;
    key.name = scanner.KeyName();
    key.line = scanner.GetKeyLine();
    std::string_view text;
    if (scanner.KeyPars(text)) {
        key.text = text;
    }
    if (scanner.FirstValue(text)) {
        key.values.push_back({std::string(text), std::nullopt});
        std::uint32_t separator = 0;
        while (scanner.NextValue(text, separator)) {
            key.values.push_back({std::string(text), separator});
        }
    }
    return key;
}

}  // namespace

void ReadSurface(const std::string &text, CSurfaceSink &sink) {
    par_scanner::CTextParScanner scanner(text);
    for (bool section = scanner.FirstSection(); section; section = scanner.NextSection()) {
        sink.BeginSection(std::string(scanner.SectionName()), scanner.GetSectionLine());
        for (bool key = scanner.FirstKey(); key; key = scanner.NextKey()) {
            sink.Key(ReadKey(scanner));
        }
        sink.EndSection();
    }
    scanner.Done();
}
