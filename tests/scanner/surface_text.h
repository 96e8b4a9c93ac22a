#pragma once

#include <string>

#include "scanner/text_par_scanner.h"

/// All that a scanner finds, one line a section, key, or value list:
///     [name]line
///     key@line=text|value,value value
/// A `=` or `|` is missing where the scanner answers false. With columns, the column of the tape follows every
/// step in {}. So two scanners agree if their texts do.
template <class Scanner>
std::string SurfaceText(Scanner &scanner, bool with_columns) {
    std::string result;
    const auto add_column = [&] {
        if (with_columns) {
            result.append("{").append(std::to_string(scanner.GetActPos())).append("}");
        }
    };
    add_column();
    for (bool section = scanner.FirstSection(); section; section = scanner.NextSection()) {
        result.append("[").append(scanner.SectionName()).append("]");
        result.append(std::to_string(scanner.GetSectionLine()));
        add_column();
        result += '\n';
        for (bool key = scanner.FirstKey(); key; key = scanner.NextKey()) {
            result.append(scanner.KeyName()).append("@").append(std::to_string(scanner.GetKeyLine()));
            std::string_view text;
            if (scanner.KeyPars(text)) {
                result.append("=").append(text);
            }
            add_column();
            std::uint32_t separator = 0;
            bool value = scanner.FirstValue(text);
            result += value ? "|" : "";
            while (value) {
                result.append(text);
                add_column();
                value = scanner.NextValue(text, separator);
                result += value ? par_scanner::TokenKindText(separator) : std::string_view();
            }
            add_column();
            result += '\n';
        }
    }
    return result;
}
