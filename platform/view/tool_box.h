#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/view/view.h"

/// A row of buttons. A button that is pressed posts its command, of class ecCommand, to the receiver.
class KQ_API CToolBox : public CView {
public:
    /// A button or, with command 0, a gap.
    struct TItem {
        std::string text;  ///< the name, which is also the hint
        std::uint32_t command = 0;
        std::uint32_t icon = 0;
        std::uint32_t gap = 0;  ///< the width of a gap
        bool enabled = true;

        bool IsGap() const { return command == 0; }
    };

    TViewKind Kind() const override { return TViewKind::kToolBox; }

    void AddButton(std::string_view text, std::uint32_t command, std::uint32_t icon);
    void AddGap(std::uint32_t width);
    const std::vector<TItem> &Items() const { return items_; }
    /// Replaces all items.
    void SetItems(std::vector<TItem> items);
    /// All buttons with a command.
    void Enable(std::uint32_t command, bool enabled);
    /// True if there is a button with the command that is enabled.
    bool IsEnabled(std::uint32_t command) const;
    using CView::IsEnabled;
    /// The least depth that shows the buttons whole.
    std::int32_t GetMinD() const;

    void SetReceiver(CEventHandler *receiver) { receiver_ = receiver; }
    /// A person presses a button; false if there is none with the command, or it or the tool box is
    /// disabled.
    bool UserPress(std::uint32_t command);

private:
    std::vector<TItem> items_;
    CEventHandler *receiver_ = nullptr;
};
