#pragma once

#include <cstdint>
#include <string>

#include "platform/view/view.h"

namespace kq_pdt {

/// What a person left in the editor of a cell, to be put into another editor of the same cell.
class CEditorContent {
public:
    explicit CEditorContent(const CView &editor);
    void PutInto(CView &editor) const;

    friend bool operator==(const CEditorContent &left, const CEditorContent &right) = default;

private:
    std::string text_;
    std::size_t selected_ = 0;
    std::uint32_t number_ = 0;
};

}  // namespace kq_pdt
