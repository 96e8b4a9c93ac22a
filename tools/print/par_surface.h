#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A value of a key line, and the token kind of the separator before it; the first has none.
struct TSurfaceValue {
    std::string value;
    std::optional<std::uint32_t> separator;
};

struct TSurfaceKey {
    std::string name;
    std::uint32_t line = 0;
    std::optional<std::string> text;  ///< all that follows the `=`; none without one
    std::vector<TSurfaceValue> values;
};

/// Takes the surface of a parameter file piece by piece, in the order of the text.
class CSurfaceSink {
public:
    virtual ~CSurfaceSink() = default;
    virtual void BeginSection(const std::string &name, std::uint32_t line) = 0;
    virtual void Key(const TSurfaceKey &key) = 0;
    virtual void EndSection() = 0;
};

/// Reads a parameter file's text with the scanner and hands each piece to the sink.
void ReadSurface(const std::string &text, CSurfaceSink &sink);
