#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/code_page.h"

/// A JSON value that keeps its keys in the order in which they were put in.
using TJson = nlohmann::ordered_json;

/// A JSON value for people's eyes and programs', bytes that aren't UTF-8 replaced: the system's messages may hold any.
inline std::string Dumped(const TJson &json) {
    return json.dump(2, ' ', false, TJson::error_handler_t::replace) + "\n";
}

/// A text of the library as a JSON string.
inline TJson TextJson(std::string_view text) { return kq_base::ToUtf8(text); }

inline TJson TextOrNull(const std::optional<std::string> &text) { return text ? TextJson(*text) : TJson(nullptr); }

inline TJson TextsJson(const std::vector<std::string> &texts) {
    TJson array = TJson::array();
    for (const std::string &text : texts) {
        array.push_back(TextJson(text));
    }
    return array;
}

template <class Number>
TJson NumberOrNull(const std::optional<Number> &number) {
    return number ? TJson(*number) : TJson(nullptr);
}
