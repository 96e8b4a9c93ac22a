#include "tools/print/par_surface.h"

#include <algorithm>

#include "scanner/par_scanner.h"

namespace {

/// The scanner over a text in memory.
class CTextParScanner : public par_scanner::CParScanner {
public:
    explicit CTextParScanner(const std::string &text) : text_(text) {}
    std::uint32_t GetDataSize() override { return static_cast<std::uint32_t>(text_.size()); }
    bool ReadBlockData(par_scanner::TStr0_ *buffer) override {
        std::copy(text_.begin(), text_.end(), buffer);
        return true;
    }

private:
    const std::string &text_;
};

TSurfaceKey ReadKey(CTextParScanner &scanner) {
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
    CTextParScanner scanner(text);
    bool section = scanner.Init(0) && scanner.FirstSection();
    for (; section; section = scanner.NextSection()) {
        sink.BeginSection(std::string(scanner.SectionName()), scanner.GetSectionLine());
        for (bool key = scanner.FirstKey(); key; key = scanner.NextKey()) {
            sink.Key(ReadKey(scanner));
        }
        sink.EndSection();
    }
    scanner.Done();
}
