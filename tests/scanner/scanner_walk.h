#pragma once

#include <string>

#include "scanner/text_par_scanner.h"

/// All that a scanner finds, one line a section, key, or value list:
///     [name]line
///     key@line=text|value,value value
/// A `=` or `|` is missing where the scanner answers false. With places, the column of the tape stands in {} behind
/// every step. So two scanners agree if the texts of their walks do.
template <class Scanner>
std::string Walk(Scanner &scanner, bool places) {
    std::string result;
    const auto place = [&] {
        if (places) {
            result.append("{").append(std::to_string(scanner.GetActPos())).append("}");
        }
    };
    place();
    for (bool section = scanner.FirstSection(); section; section = scanner.NextSection()) {
        result.append("[").append(scanner.SectionName()).append("]");
        result.append(std::to_string(scanner.GetSectionLine()));
        place();
        result += '\n';
        for (bool key = scanner.FirstKey(); key; key = scanner.NextKey()) {
            result.append(scanner.KeyName()).append("@").append(std::to_string(scanner.GetKeyLine()));
            std::string_view text;
            if (scanner.KeyPars(text)) {
                result.append("=").append(text);
            }
            place();
            std::uint32_t separator = 0;
            bool value = scanner.FirstValue(text);
            result += value ? "|" : "";
            while (value) {
                result.append(text);
                place();
                value = scanner.NextValue(text, separator);
                result += value ? par_scanner::TokenKindText(separator) : std::string_view();
            }
            place();
            result += '\n';
        }
    }
    return result;
}
