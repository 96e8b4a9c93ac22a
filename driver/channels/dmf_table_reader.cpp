#include "driver/channels/dmf_table_reader.h"

#include "platform/base/code_page.h"
#include "platform/base/number_text.h"
#include "template/language/keywords.h"

namespace kq_pdt {

using par_scanner::kEndOfInput;
using par_scanner::kIdentifier;
using par_scanner::kMinus;
using par_scanner::kNumber;

CDmfTableReader::CDmfTableReader(std::string_view text) { reader_.InitDString(text); }

bool CDmfTableReader::Next(TEntry &entry) {
    if (stopped_ || (!begun_ && !FindBegin()) || !FindNumber()) {
        return false;
    }
    stopped_ = !ReadEntry(entry);
    return !stopped_;
}

bool CDmfTableReader::FindBegin() {
    begun_ = true;
    do {
        reader_.NextToken();
        const bool other_begin =
            reader_.Kind() == kIdentifier && kq_base::EqualIgnoringCase(reader_.TokenText(), "begin");
        if (other_begin && other_begin_line_ == 0) {
            other_begin_line_ = reader_.GetLine();
        }
    } while (reader_.Kind() != kEndOfInput && reader_.Kind() != kwBegin);
    return reader_.Kind() == kwBegin;
}

/// Goes on from the last token of the entry before, or from `begin`: whatever is no number is passed over, `end` too.
bool CDmfTableReader::FindNumber() {
    while (reader_.Kind() != kEndOfInput) {
        entry_position_ = reader_.GetPosition();
        reader_.NextToken();
        if (reader_.Kind() == kNumber) {
            entry_line_ = reader_.GetLine();
            return true;
        }
    }
    return false;
}

bool CDmfTableReader::ReadEntry(TEntry &entry) {
    if (!ReadNumber(entry.first)) {
        return false;
    }
    entry.last = entry.first;
    if (reader_.Kind() == kMinus) {
        reader_.NextToken();
        if (reader_.Kind() == kNumber && !ReadNumber(entry.last)) {
            return false;
        }
    }
    entry.type = reader_.Kind();
    if (!IsChannelType(entry.type)) {
        return false;
    }
    reader_.NextToken();
    entry.direction = reader_.Kind();
    return IsDirection(entry.direction);
}

bool CDmfTableReader::ReadNumber(std::uint32_t &number) {
    if (!kq_base::ParseDecimal(reader_.TokenText(), number)) {
        return false;
    }
    reader_.NextToken();
    return true;
}

}  // namespace kq_pdt
