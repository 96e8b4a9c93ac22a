#pragma once

#include <cstdint>
#include <memory>

#include "platform/view/controls.h"

namespace kq_pdt {

class CItem;
class CDefNode;

/// The in-place editor of one cell.
struct TCellEditor {
    enum class TControl : std::uint32_t { kNone = 0, kEditBox = 1, kCountBox = 2, kComboBox = 3, kAddList = 4 };

    CItem *item = nullptr;        ///< the item whose cell is edited, set by the item itself
    CDefNode *section = nullptr;  ///< the nodes whose scopes hold while the edit is committed
    CDefNode *key = nullptr;
    TControl kind = TControl::kNone;
    std::unique_ptr<CView> control;  ///< none if the cell can't be edited now

    CEditBox &EditBox() const { return static_cast<CEditBox &>(*control); }
    CIntegerCountBox &CountBox() const { return static_cast<CIntegerCountBox &>(*control); }
    CComboBox &ComboBox() const { return static_cast<CComboBox &>(*control); }
};

}  // namespace kq_pdt
