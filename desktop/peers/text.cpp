#include "desktop/peers/text.h"

#include <array>
#include <unordered_map>

#include "platform/base/code_page.h"

namespace kq_desktop {

namespace {

/// The Unicode pictures of the control characters begin here.
constexpr char16_t kPictures = 0x2400;
constexpr unsigned char kFirstPrintable = 0x20;

const std::unordered_map<char16_t, char> &Bytes() {
    static const std::unordered_map<char16_t, char> bytes = [] {
        std::unordered_map<char16_t, char> map;
        for (std::size_t byte = 0; byte < kq_base::kCodePageToUnicode.size(); ++byte) {
            map.emplace(kq_base::kCodePageToUnicode[byte], static_cast<char>(byte));
        }
        for (unsigned char byte = 0; byte < kFirstPrintable; ++byte) {
            map.emplace(static_cast<char16_t>(kPictures + byte), static_cast<char>(byte));
        }
        return map;
    }();
    return bytes;
}

QString Convert(std::string_view bytes, bool visible) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar *out = text.data();
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        const bool picture = visible && byte < kFirstPrintable && byte != '\t';
        *out++ = QChar(picture ? static_cast<char16_t>(kPictures + byte)
                               : static_cast<char16_t>(kq_base::kCodePageToUnicode[byte]));
    }
    return text;
}

}  // namespace

QString ToQt(std::string_view bytes) { return Convert(bytes, false); }

QString ToQtVisible(std::string_view bytes) { return Convert(bytes, true); }

std::string FromQt(const QString &text, bool *lossy) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text) {
        if (character.isLowSurrogate()) {
            continue;
        }
        const auto found = Bytes().find(character.unicode());
        if (found == Bytes().end() && lossy != nullptr) {
            *lossy = true;
        }
        bytes += found != Bytes().end() ? found->second : '?';
    }
    return bytes;
}

}  // namespace kq_desktop
