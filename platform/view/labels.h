#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/view/view.h"

/// Views that show one text.

/// A line of text. With an icon, that is at the line's beginning, and the text kIconRoom units after it.
class KQ_API CStaticText : public CView {
public:
    static constexpr std::int32_t kIconRoom = 30;

    explicit CStaticText(std::string_view text = {}, std::uint32_t icon = 0) : text_(text), icon_(icon) {}

    TViewKind Kind() const override { return TViewKind::kStaticText; }
    const std::string &Text() const { return text_; }
    void SetText(std::string_view text);
    /// Its number; 0 for none.
    std::uint32_t Icon() const { return icon_; }

private:
    std::string text_;
    std::uint32_t icon_;
};

/// A button that posts its command, of class ecCommand, to the receiver.
class KQ_API CButton : public CView {
public:
    CButton(std::string_view text, std::uint32_t command) : text_(text), command_(command) {}

    TViewKind Kind() const override { return TViewKind::kButton; }
    const std::string &Text() const { return text_; }
    std::uint32_t Command() const { return command_; }

    void SetReceiver(CEventHandler *receiver) { receiver_ = receiver; }
    /// A person presses it; false if it is disabled.
    bool UserPress();

private:
    std::string text_;
    std::uint32_t command_;
    CEventHandler *receiver_ = nullptr;
};

/// A text that floats over what it explains.
class KQ_API CBubble : public CView {
public:
    explicit CBubble(std::string_view text) : text_(text) {}

    TViewKind Kind() const override { return TViewKind::kBubble; }
    const std::string &Text() const { return text_; }

private:
    std::string text_;
};
