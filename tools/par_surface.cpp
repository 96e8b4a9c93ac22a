#include "tools/par_surface.h"

#include <algorithm>
#include <array>

#include "scanner/par_scanner.h"

namespace {

constexpr std::uint32_t kHigh = 255;
using TBuffer = std::array<char, kHigh + 1>;

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

TSurfaceKey ReadKey(CTextParScanner &scanner, const char *name) {
    TSurfaceKey key;
    key.name = name;
    key.line = scanner.GetKeyLine();
    TBuffer buffer{};
    if (scanner.GetKeyPars(kHigh, buffer.data())) {
        key.text = buffer.data();
    }
    std::uint32_t separator = 0;
    if (scanner.GetFirstPar(kHigh, buffer.data())) {
        key.values.push_back({buffer.data(), std::nullopt});
        while (scanner.GetNextPar(kHigh, buffer.data(), separator)) {
            key.values.push_back({buffer.data(), separator});
        }
    }
    return key;
}

}  // namespace

void WalkSurface(const std::string &text, CSurfaceSink &sink) {
    CTextParScanner scanner(text);
    TBuffer name{};
    if (scanner.Init(0)) {
        for (bool section = scanner.GetFirstSection(kHigh, name.data()); section;
             section = scanner.GetNextSection(kHigh, name.data())) {
            sink.BeginSection(name.data(), scanner.GetSectionLine());
            for (bool key = scanner.GetFirstKey(kHigh, name.data()); key;
                 key = scanner.GetNextKey(kHigh, name.data())) {
                sink.Key(ReadKey(scanner, name.data()));
            }
            sink.EndSection();
        }
    }
    scanner.Done();
}
