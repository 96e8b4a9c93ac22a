#include "tools/console/files.h"

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/base/code_page.h"
#include "platform/base/files.h"
#include "platform/base/save_file.h"
#include "tools/console/diagnostics.h"

namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 16U;

bool ReadStream(std::istream &stream, std::string &text, std::string &reason) {
    std::array<char, kPieceSize> piece{};
    errno = 0;
    do {
        stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        text.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream && text.size() <= kq_base::CDisk::kMaxSize);
    if (stream.bad() || text.size() > kq_base::CDisk::kMaxSize) {
        reason = stream.bad() && errno != 0 ? std::strerror(errno) : "it can't be read, or is too large";
        return false;
    }
    return true;
}

}  // namespace

bool ReadSource(TConsole &console, const std::string &name, CSourceText &source) {
    const bool from_stream = name == kStandardInput;
    const std::string shown = from_stream ? "<stdin>" : name;
    std::string text;
    std::string reason;
    if (from_stream) {
        if (!ReadStream(console.in, text, reason)) {
            PrintError(console, shown, reason);
            return false;
        }
    } else if (!kq_base::CDisk::Current().Read(name, text, reason)) {
        PrintError(console, shown, kq_base::ToUtf8(reason));
        return false;
    }
    source = CSourceText(shown, std::move(text));
    return true;
}

bool SaveText(TConsole &console, const std::string &name, std::string_view text) {
    std::string reason;
    if (kq_base::SaveFile(name, text, reason)) {
        return true;
    }
    PrintError(console, name, kq_base::ToUtf8(reason));
    return false;
}
