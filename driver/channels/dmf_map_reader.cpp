#include "driver/channels/dmf_map_reader.h"

#include <algorithm>

#include "driver/channels/dmf_words.h"
#include "driver/channels/texts.h"
#include "platform/base/code_page.h"
#include "platform/base/number_text.h"

namespace kq_drv {

using par_scanner::kEndOfInput;
using par_scanner::kIdentifier;
using par_scanner::kMinus;
using par_scanner::kNumber;

CDmfMapReader::CDmfMapReader(std::string_view text, CChannelBlockSet &blocks) : blocks_(blocks) {
    reader_.InitDString(text);
}

bool CDmfMapReader::Read(std::string &error) {
    do {
        NextToken();
    } while (!AtEnd() && !IsWord("begin"));
    NextToken();
    return ReadEntries(error);
}

bool CDmfMapReader::ReadFrom(const par_scanner::TPosition &entry, std::string &error) {
    reader_.SetPosition(entry);
    NextToken();
    return ReadEntries(error);
}

void CDmfMapReader::NextToken() {
    std::uint32_t reason = 0;  // a token that can't be read ends the text
    if (AtEnd() || !reader_.ReadToken(reason, token_, false)) {
        token_.kind = kEndOfInput;
        return;
    }
    if (token_.kind == kIdentifier || token_.kind == kNumber) {
        word_ = token_.View();
    }
    if (token_.kind == kIdentifier) {
        std::transform(word_.begin(), word_.end(), word_.begin(), [](char letter) { return kq_base::ToLower(letter); });
    }
}

bool CDmfMapReader::IsWord(std::string_view word) const { return token_.kind == kIdentifier && word_ == word; }

bool CDmfMapReader::ReadEntries(std::string &error) {
    TOutcome outcome = TOutcome::kEntry;
    while (outcome == TOutcome::kEntry) {
        outcome = ReadEntry();
    }
    if (outcome == TOutcome::kFailed) {
        error = error_;
    }
    return outcome == TOutcome::kFinished;
}

CDmfMapReader::TOutcome CDmfMapReader::ReadEntry() {
    using TStep = TOutcome (CDmfMapReader::*)();
    for (const TStep step : {&CDmfMapReader::ReadFirst, &CDmfMapReader::ReadLast, &CDmfMapReader::ReadType,
                             &CDmfMapReader::ReadDirection}) {
        const TOutcome outcome = AtEnd() ? TOutcome::kFinished : (this->*step)();
        if (outcome != TOutcome::kEntry) {
            return outcome;
        }
    }
    blocks_.Insert(block_);
    return TOutcome::kEntry;
}

CDmfMapReader::TOutcome CDmfMapReader::ReadFirst() {
    if (IsWord("end")) {
        return TOutcome::kFinished;
    }
    if (token_.kind != kNumber) {
        return Fail(texts::kBadMapNumber);
    }
    if (!kq_base::ParseDecimal(word_, block_.first)) {
        return FailAtToken(texts::kBadMapNumber);
    }
    NextToken();
    return TOutcome::kEntry;
}

CDmfMapReader::TOutcome CDmfMapReader::ReadLast() {
    block_.count = 1;
    if (token_.kind != kMinus) {
        return TOutcome::kEntry;
    }
    NextToken();
    if (AtEnd()) {
        return TOutcome::kFinished;
    }
    if (token_.kind != kNumber) {
        return Fail(texts::kBadMapNumber);
    }
    std::uint32_t last = 0;
    if (!kq_base::ParseDecimal(word_, last)) {
        return FailAtToken(texts::kBadMapNumber);
    }
    if (last < block_.first) {
        return FailAtToken(texts::kBoundsReversed);
    }
    block_.count = last - block_.first + 1;
    NextToken();
    return TOutcome::kEntry;
}

CDmfMapReader::TOutcome CDmfMapReader::ReadType() {
    if (token_.kind != kIdentifier) {
        return Fail(texts::kTypeExpected);
    }
    block_.type = TypeOfWord(word_);
    if (block_.type == 0) {
        return FailAtToken(texts::kUnknownType);
    }
    NextToken();
    return TOutcome::kEntry;
}

CDmfMapReader::TOutcome CDmfMapReader::ReadDirection() {
    if (token_.kind != kIdentifier) {
        return Fail(texts::kDirectionExpected);
    }
    if (!DirectionOfWord(word_, block_.direction)) {
        return FailAtToken(texts::kUnknownDirection);
    }
    CChannelBlock found;
    if (blocks_.Find(block_.first, found)) {
        return Fail(texts::kRedefined);
    }
    NextToken();
    return TOutcome::kEntry;
}

CDmfMapReader::TOutcome CDmfMapReader::Fail(std::string_view text) {
    error_ = text;
    return TOutcome::kFailed;
}

CDmfMapReader::TOutcome CDmfMapReader::FailAtToken(std::string_view text) {
    error_.assign(text).append(" (").append(word_).append(")");
    return TOutcome::kFailed;
}

}  // namespace kq_drv
