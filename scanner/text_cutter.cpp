#include "scanner/text_cutter.h"

#include <algorithm>

#include "scanner/plain_text.h"

namespace par_scanner::detail {

namespace {

bool IsPartOfLineEnd(const TToken &token, std::uint32_t index, std::string_view buffer) {
    return token.kind == kIdentifier && token.View() == "\r" && index < buffer.size() && buffer[index] == '\n';
}

}  // namespace

std::string_view BoundText(const char *first, const char *last) {
    if (last <= first) {
        return {first, first};
    }
    const std::string_view text = PlainText(first, last);
    const auto *const end =
        std::find_if(text.begin(), text.end(), [](char character) { return character == '\r' || character == '\0'; });
    return {first, static_cast<std::size_t>(end - first)};
}

TCut CutText(CTapeReader &tape, std::string_view buffer, std::uint64_t stops) {
    std::uint32_t first = tape.GetPosition().index;
    std::uint32_t last = first;
    bool started = false;
    TToken token;
    std::uint32_t error = 0;
    bool end = true;
    while (tape.ReadToken(error, token, false)) {
        if ((stops & KindSet(token.kind)) != 0) {
            end = false;
            break;
        }
        const std::uint32_t index = tape.GetPosition().index;
        if (IsPartOfLineEnd(token, index, buffer)) {
            continue;
        }
        if (token.kind != kBlank) {
            last = index;
            started = true;
        } else if (!started) {
            first = index;
        }
    }
    return {BoundText(buffer.data() + first, buffer.data() + last), end ? std::uint32_t{kLineEnd} : token.kind, end};
}

bool FindKind(CTapeReader &tape, std::uint32_t kind1, std::uint32_t kind2) {
    TToken token;
    std::uint32_t error = 0;
    while (tape.ReadToken(error, token, false)) {
        if (token.kind == kind1 || token.kind == kind2) {
            return token.kind == kind1;
        }
    }
    return false;
}

std::uint64_t SkipKinds(CTapeReader &tape, std::uint64_t kinds) {
    std::uint64_t seen = 0;
    for (;;) {
        const TPosition before = tape.GetPosition();
        TToken token;
        std::uint32_t error = 0;
        if (!tape.ReadToken(error, token, false) || (kinds & KindSet(token.kind)) == 0) {
            tape.SetPosition(before);
            return seen;
        }
        seen |= KindSet(token.kind);
    }
}

}  // namespace par_scanner::detail
