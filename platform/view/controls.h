#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/base/bounded_text.h"
#include "platform/base/export.h"
#include "platform/view/view.h"

/// The controls in which a cell of a sheet is edited. What a person does arrives through the operations named
/// User...; they give false, and change nothing, where the control wouldn't let a person do that.

/// A list of texts of which one is selected; with free text, a text may also be typed.
class KQ_API CComboBox : public CView {
public:
    TViewKind Kind() const override { return TViewKind::kComboBox; }
    enum class TMode : std::uint8_t { kList, kFreeText };

    explicit CComboBox(TMode mode) : mode_(mode) {}

    TMode Mode() const { return mode_; }

    void AppendEntry(std::string_view text);
    std::size_t EntryCount() const { return entries_.size(); }
    /// An entry by its position from 1; empty beyond the list.
    std::string_view Entry(std::size_t position) const;

    /// Selects an entry by its position from 1, and its text becomes the control's. 0, or a position beyond the list,
    /// selects nothing.
    void Select(std::size_t position);
    /// The position of the selected entry from 1; 0 if none is, or the text is a free one.
    std::size_t Selected() const { return selected_; }

    /// Sets a free text, which selects nothing even if an entry is equal. Does nothing without free text.
    void SetText(std::string_view text);
    /// The selected entry's text, or the free one.
    std::string_view Text() const { return text_.View(); }

    bool UserSelect(std::size_t position);
    /// Takes the first line of what is typed or pasted; false without free text.
    bool UserType(std::string_view text);

private:
    TMode mode_;
    std::vector<kq_base::TText> entries_;
    std::size_t selected_ = 0;
    kq_base::TText text_;
};

/// A whole number with steps up and down. The program may give it any value; a person stays within the limits.
class KQ_API CIntegerCountBox : public CView {
public:
    TViewKind Kind() const override { return TViewKind::kCountBox; }
    /// The limits are included. From 0 to 0 there are none; a `to` below `from` means no upper one.
    CIntegerCountBox(std::uint32_t value, std::uint32_t from, std::uint32_t to);

    std::uint32_t Value() const { return value_; }
    void SetValue(std::uint32_t value);
    /// The limits in effect.
    std::uint32_t From() const { return from_; }
    std::uint32_t To() const { return to_; }

    /// Types a decimal number.
    bool UserType(std::string_view text);
    /// A step goes to the next value within the limits.
    bool UserStepUp();
    bool UserStepDown();

private:
    bool UserSet(std::uint32_t value);

    std::uint32_t value_;
    std::uint32_t from_;
    std::uint32_t to_;
};

/// A line of text of at most 255 characters; longer ones are cut.
class KQ_API CEditBox : public CView {
public:
    TViewKind Kind() const override { return TViewKind::kEditBox; }
    explicit CEditBox(std::string_view text) : text_(text) {}

    std::string_view Text() const { return text_.View(); }
    void SetText(std::string_view text);
    /// Takes the first line of what is typed or pasted.
    bool UserType(std::string_view text);

private:
    kq_base::TText text_;
};
