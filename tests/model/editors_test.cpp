#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/model_session.h"

using kq_pdt::TCellEditor;

namespace {

/// One key `k` with these statements.
std::string OneKey(const std::string &body) {
    return "def_section name = 'S'; def_key name = 'k'; multiple; var %v%, %w%; " + body + " end_key end_section";
}

/// What a person finds in a cell: "count 3 [1..9]", "edit abc", "list [A|B] 2 B", "free [none] 0 5", "-" for nothing.
std::string Describe(const TCellEditor &editor) {
    if (!editor.control) {
        return "-";
    }
    if (editor.kind == TCellEditor::TControl::kCountBox) {
        const CIntegerCountBox &box = editor.CountBox();
        return "count " + std::to_string(box.Value()) + " [" + std::to_string(box.From()) + ".." +
               (box.To() == UINT32_MAX ? "" : std::to_string(box.To())) + "]";
    }
    if (editor.kind == TCellEditor::TControl::kEditBox) {
        return "edit " + std::string(editor.EditBox().Text());
    }
    const CComboBox &box = editor.ComboBox();
    std::string text = box.Mode() == CComboBox::TMode::kList ? "list [" : "free [";
    for (std::size_t row = 1; row <= box.EntryCount(); ++row) {
        text += (row == 1 ? "" : "|") + std::string(box.Entry(row));
    }
    return kq_base::ToUtf8(text + "] " + std::to_string(box.Selected()) + " " + std::string(box.Text()));
}

/// "3" types, "#2" selects an entry, "+" and "-" step, "!" leaves without taking.
bool Act(TCellEditor &editor, const std::string &action) {
    if (action == "!") {
        return false;
    }
    if (editor.kind == TCellEditor::TControl::kCountBox) {
        CIntegerCountBox &box = editor.CountBox();
        EXPECT_TRUE(action == "+" ? box.UserStepUp() : action == "-" ? box.UserStepDown() : box.UserType(action));
    } else if (editor.kind == TCellEditor::TControl::kEditBox) {
        EXPECT_TRUE(editor.EditBox().UserType(action));
    } else if (action[0] == '#') {
        EXPECT_TRUE(editor.ComboBox().UserSelect(static_cast<std::size_t>(std::stoi(action.substr(1)))));
    } else {
        EXPECT_TRUE(editor.ComboBox().UserType(action));
    }
    return true;
}

struct TEdit {
    const char *body;      ///< of the template's one key, which is `multiple`
    const char *lines;     ///< values of the key, a line each parted by '/'
    std::uint32_t cell;    ///< of the first line, from 1
    const char *found;     ///< the editor as it opens
    const char *actions;   ///< one edit after the other, parted by '/'
    const char *written;   ///< the lines afterwards
    const char *channels;  ///< the table afterwards
    unsigned boxes;        ///< how many refusals the user was shown
};

const char *const kNumber = "par = number { range_from = 1; range_to = 9; nedef = 'none' };";
const char *const kOptional = "par = number { range_from = 1; range_to = 9; nedef = 'none'; optional }; par = 'x';";
const char *const kText = "par = string;";
const char *const kOptionalText = "par = string { optional; nedef = 'none' }; par = 'x';";
const char *const kChoice = "par = options { option = 'A' label = 'Alfa'; option = 'B' label = 'Beta' };";
const char *const kOptionalChoice =
    "par = options { optional; nedef = 'none'; option = 'A'; option = 'B' }; par = 'x';";
const char *const kOff =
    "par = number { enable_if %v% = 1 }; par = string { enable_if %v% = 1 };"
    "par = options { option = 'A'; option = 'B'; enable_if %v% = 1 }; par = 'x';";
const char *const kBounds =
    "channels; par = number { ch_from; ch_direction = input }; par = number { ch_to };"
    "par = options { option = 'r'; option = 'b'; ch_type 'r' = real; ch_type 'b' = boolean };";
const char *const kCounted = "channels; par = number { ch_number; ch_direction = output }; par = number { ch_count; };";
const char *const kFixed = "channels; par = number { ch_number; ch_count = 4; ch_type = real };";
const char *const kLabelled =
    "channels; par = number { ch_number; ch_count = 1 };"
    "par = options { option = '1' label = 'in'; option = '2' label = 'out';"
    "                ch_direction '1' = input; ch_direction '2' = output };"
    "par = options { option = 'r'; option = 'b'; ch_type 'r' = real };";
const char *const kOpenNumber =
    "channels; par = number { ch_number; optional; nedef = 'none'; ch_type = real;"
    "ch_direction = input }; par = 'x' + number { ch_count; };";
const char *const kOpenBounds =
    "channels; par = number { ch_from; optional; nedef = 'none' };"
    "par = 'x' + number { ch_to; optional; nedef = 'none' };";
const char *const kOpenFirst =
    "channels; par = number { ch_from; optional }; par = 'x' + number { ch_to; ch_type = real; ch_direction = input };";
const char *const kOpenCount =
    "channels; par = number { ch_number; ch_type = real; ch_direction = input };"
    "par = 'x' + number { ch_count; optional; nedef = 'none'; write_if_all };";
const char *const kByVariable =
    "channels; par = options { option = 'r'; option = 'b'; id = %v% };"
    "par = number { ch_number; ch_count = 1; ch_type %v% 'r' = real; ch_type 'b' = boolean };";
const char *const kShifted =
    "par = number { id = %v% };"
    "channels_group { ch_from = %v%; ch_to = %v% + 2; type %v% > 50, boolean; type true, real; direction true, input "
    "};";
const char *const kGroup =
    "par = number { id = %v% }; par = number { id = %w% };"
    "channels_group { ch_from = %v%; ch_to = %w%; type %v% < 50, real; direction true, input };";

// clang-format off
const TEdit kEdits[] = {
    {kNumber, "3", 1, "count 3 [1..9]", "9/-/-", "7", "", 0},
    {kNumber, "3", 1, "count 3 [1..9]", "!", "3", "", 0},
    {kNumber, "77", 1, "count 77 [1..9]", "-", "9", "", 0},
    {"par = number;", "3", 1, "count 3 [0..]", "4294967295", "4294967295", "", 0},
    {"par = number { range_from = 5 };", "7", 1, "count 7 [5..]", "5000", "5000", "", 0},
    {kOptional, "3, x", 1, "free [none] 0 3", "9", "9, x", "", 0},
    {kOptional, "3, x", 1, "free [none] 0 3", "10", "3, x", "", 0},
    {kOptional, "3, x", 1, "free [none] 0 3", "abc", "3, x", "", 0},
    {kOptional, "3, x", 1, "free [none] 0 3", "#1", "x", "", 0},
    {kOptional, "3, x", 1, "free [none] 0 3", "none", "3, x", "", 0},
    {kOptional, "x", 1, "free [none] 1 none", "4", "4, x", "", 0},
    {kOptional, "x", 1, "free [none] 1 none", "0", "1, x", "", 0},
    {kText, "abc", 1, "edit abc", "d, e", "d, e", "", 0},
    {kOptionalText, "y, x", 1, "free [none] 0 y", "#1", "x", "", 0},
    {kOptionalText, "y, x", 1, "free [none] 0 y", "none", "none, x", "", 0},
    {kChoice, "B", 1, "list [Alfa|Beta] 2 Beta", "#1", "A", "", 0},
    {kOptionalChoice, "B, x", 1, "list [none|A|B] 3 B", "#1", "x", "", 0},
    {kOptionalChoice, "B, x", 1, "list [none|A|B] 3 B", "#2", "A, x", "", 0},
    {kOptionalChoice, "x", 1, "list [none|A|B] 1 none", "#3", "B, x", "", 0},
    {kOff, "x", 1, "-", "1", "x", "", 0},
    {kOff, "x", 2, "-", "1", "x", "", 0},
    {kOff, "x", 3, "-", "#2", "x", "", 0},
    // Bounds: a bound that is moved past the other takes it along.
    {kBounds, "3, 5, r", 1, "count 3 [1..2147483647]", "4", "4, 5, r", "*4-5 real input", 0},
    {kBounds, "3, 5, r", 1, "count 3 [1..2147483647]", "8", "8, 8, r", "*8-8 real input", 0},
    {kBounds, "3, 5, r", 2, "count 5 [1..2147483647]", "2", "2, 2, r", "*2-2 real input", 0},
    {kBounds, "3, 5, r", 2, "count 5 [1..2147483647]", "+", "3, 6, r", "*3-6 real input", 0},
    {kBounds, "3, 5, r/1, 2, b", 1, "count 3 [1..2147483647]", "2", "3, 5, r/1, 2, b", "*1-2 boolean input; *3-5 real input", 1},
    {kBounds, "3, 5, r", 3, "list [r|b] 1 r", "#2", "3, 5, b", "*3-5 boolean input", 0},
    {kCounted, "7, 2", 1, "count 7 [1..2147483647]", "20", "20, 2", "*20-21 ? output", 0},
    {kCounted, "7, 2", 2, "count 2 [0..]", "4", "7, 4", "*7-10 ? output", 0},
    {kCounted, "7, 2", 2, "count 2 [0..]", "3/1/2/2", "7, 2", "*7-8 ? output", 0},
    {kCounted, "7, 2/10, 1", 2, "count 2 [0..]", "3/4", "7,  3/10, 1", "*7-9 ? output; *10-10 ? output", 1},
    {kFixed, "7", 1, "count 7 [1..2147483647]", "9", "9", "*9-12 real ?", 0},
    // Words go by what the user sees: a label that is no row's text is refused.
    {kLabelled, "5, 1, r", 2, "list [in|out] 1 in", "#2", "5, 1, r", "*5-5 real input", 0},
    {kLabelled, "5, 1, r", 3, "list [r|b] 1 r", "#2", "5, 1, r", "*5-5 real input", 0},
    // Numbers that may be missing.
    {kOpenNumber, "7, x2", 1, "free [none] 0 7", "#1", "x2", "", 0},
    {kOpenNumber, "7, x2", 1, "free [none] 0 7", "0", "7, x2", "*7-8 real input", 0},
    {kOpenNumber, "7, x2", 1, "free [none] 0 7", "3", "3, x2", "*3-4 real input", 0},
    {kOpenNumber, "9, x2/5, x2", 1, "free [none] 0 9", "#1/1", "1, x2/5, x2", "*1-2 real input; *5-6 real input", 0},
    {kOpenNumber, "9, x2/5, x2", 1, "free [none] 0 9", "1/#1/4", "x2/5, x2", "*5-6 real input", 1},
    {kOpenCount, "7", 2, "free [none] 1 none", "2/3", "7, x3", "*7-9 real input", 0},
    {kOpenCount, "7/8, x1", 2, "free [none] 1 none", "2/1", "7, x1/8, x1", "*7-7 real input; *8-8 real input", 1},
    {kOpenFirst, "3, x5", 1, "free [<nedefinován>] 0 3", "#1/4", "4, x5", "*4-5 real input", 0},
    {kOpenFirst, "3, x5", 1, "free [<nedefinován>] 0 3", "4/#1/8", "8, x8", "*8-8 real input", 0},
    {kOpenBounds, "3, x5", 1, "free [none] 0 3", "#1", "x5", "", 0},
    {kOpenBounds, "3, x5", 2, "free [none] 0 5", "#1", "3, x5", "*3-5 ? ?", 0},
    // What follows from a value may refuse it.
    {kByVariable, "r, 4", 1, "list [r|b] 1 r", "#2", "b, 4", "*4-4 boolean ?", 0},
    {kShifted, "3", 1, "count 3 [0..]", "4/60/5", "5", "*5-7 real input", 0},
    {kShifted, "3/6", 1, "count 3 [0..]", "4/51/54", "54/6", "*6-8 real input; *54-56 boolean input", 1},
    {kGroup, "3, 5", 1, "count 3 [0..]", "4/5/3", "3, 5", "*3-5 real input", 0},
    {kGroup, "3, 5", 2, "count 5 [0..]", "6/4/7", "3, 7", "*3-7 real input", 0},
    {kGroup, "3, 5", 1, "count 3 [0..]", "6", "3, 5", "*3-5 real input", 1},
    {kGroup, "3, 60", 1, "count 3 [0..]", "55", "3, 60", "*3-60 real input", 1},
    {kGroup, "3, 5/7, 9", 2, "count 5 [0..]", "8", "3, 5/7, 9", "*3-5 real input; *7-9 real input", 1},
};
// clang-format on

std::string ParOf(const std::string &lines) {
    std::string text = "[S]\nk = ";
    for (const char character : lines) {
        text += character == '/' ? std::string("\nk = ") : std::string(1, character);
    }
    return text + "\n";
}

/// The values of the lines of `k`, as they were written.
std::string LinesOf(const std::string &written) {
    std::string lines;
    for (std::size_t at = written.find(" = "); at != std::string::npos; at = written.find(" = ", at + 3)) {
        lines += (lines.empty() ? "" : "/") + written.substr(at + 3, written.find('\n', at) - at - 3);
    }
    return lines;
}

TEST(Editors, TakeOrRefuseWhatAPersonDoes) {
    for (const TEdit &edit : kEdits) {
        CModelSession session;
        SCOPED_TRACE(std::string(edit.body) + "\n" + edit.lines + " cell " + std::to_string(edit.cell) + " <- " +
                     edit.actions);
        ASSERT_TRUE(session.Translate(OneKey(edit.body), ParOf(edit.lines))) << session.MessageLines();
        std::string found;
        std::istringstream actions(edit.actions);
        for (std::string action; std::getline(actions, action, '/');) {
            std::string opened = "-";
            CModelSession::Edit(session.SheetData(), session.Key(0, 0), edit.cell, [&](TCellEditor &editor) {
                opened = Describe(editor);
                return Act(editor, action);
            });
            found = found.empty() ? opened : found;
        }
        EXPECT_EQ(found, edit.found);
        EXPECT_EQ(LinesOf(session.Written()), edit.written);
        EXPECT_EQ(session.Channels(), edit.channels);
        EXPECT_EQ(session.boxes,
                  std::vector<std::string>(edit.boxes, "Chybné číslo kanálu: Zadané číslo kanálu není platné.||"));
    }
}

TEST(Editors, CellsOutsideAKeyAreNothing) {
    CModelSession session;
    ASSERT_TRUE(
        session.Translate("def_section name = 'S'; def_key par = number; label = 'L'; end_key end_section", ""));
    ASSERT_EQ(session.SheetData().Instances().List().size(), 0U);
    ASSERT_TRUE(session.Translate(
        "def_section name = 'S'; required; def_key par = number; label = 'L'; end_key end_section", "[S]"));
    kq_pdt::CKeyDef &key = session.Key(0, 0);
    for (const std::uint32_t index : {0U, 2U, 0xFFFFFFFFU}) {
        EXPECT_EQ(CModelSession::Cell(key, index), "") << index;
        std::unique_ptr<TCellEditor> editor;
        key.OpenEditor(index, editor);
        EXPECT_FALSE(editor) << index;
    }
    EXPECT_EQ(CModelSession::Cell(key, 1), "0");
}

}  // namespace
