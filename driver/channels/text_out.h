#pragma once

#include <string_view>

class CTextView;

/// Writes generated text, parameter files and driver maps alike, into a text view. Without a view it does
/// nothing. Lines end with CR LF.
class CTextOut {
public:
    CTextOut() = default;
    explicit CTextOut(CTextView *view) : view_(view) {}

    /// Sets the view, not owned; null takes it away.
    void Attach(CTextView *view) { view_ = view; }
    bool IsAttached() const { return view_ != nullptr; }

    /// A whole line. Like the two heads below it is cut at 255 characters, its line end not counted.
    void WriteLine(std::string_view text);
    /// The line `[text]`.
    void SectionLine(std::string_view text);
    /// Two blanks, the text and ` = `, without a line end.
    void KeyHead(std::string_view text);
    /// The text as it is.
    void Insert(std::string_view text);
    void Newline();

private:
    CTextView *view_ = nullptr;
};
