#pragma once

#include <string_view>

#include "tools/console/output.h"
#include "tools/print/json_text.h"

/// A JSON array that goes out element by element, each on a line of its own, so that a long one needs no memory.
class CJsonRows {
public:
    CJsonRows(COutput &output, std::string_view indent) : output_(output), indent_(indent) { output_.Write("["); }

    /// Begins the next element, which the caller then writes.
    void Next() {
        output_.Write(empty_ ? "\n" : ",\n");
        output_.Write(indent_);
        empty_ = false;
    }
    void Add(const TJson &row) {
        Next();
        output_.Write(row.dump());
    }
    void End() { output_.Write("]"); }

private:
    COutput &output_;
    std::string_view indent_;
    bool empty_ = true;
};
