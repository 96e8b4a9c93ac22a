#include "configurator/row_problem.h"

#include <gtest/gtest.h>

#include <chrono>
#include <iostream>

#include "scanner/unread_text.h"
#include "tests/model/edit_law_state.h"
#include "tests/support/model_session.h"
#include "tests/support/temporary_directory.h"

namespace {

using kq_pdt::TCellEditor;

/// Types a text into a cell of a row, or selects an entry "=n".
void Enter(CModelSession &session, std::size_t key, std::uint32_t cell, const std::string &value) {
    CModelSession::Edit(session.SheetData(), session.Key(0, key), cell, [&](TCellEditor &editor) {
        const std::string bytes = Bytes(value);
        switch (editor.kind) {
            case TCellEditor::TControl::kCountBox:
                return editor.CountBox().UserType(bytes);
            case TCellEditor::TControl::kEditBox:
                return editor.EditBox().UserType(bytes);
            default:
                return value.starts_with('=')
                           ? editor.ComboBox().UserSelect(static_cast<std::size_t>(std::stoul(value.substr(1))))
                           : editor.ComboBox().UserType(bytes);
        }
    });
}

/// True if what a session writes reads into the same rows without a message.
bool ReadsBack(CModelSession &session, const std::string &pdt) {
    const std::string par = session.Written();
    const TLawState state = StateUnderLaw(session);
    std::size_t rows = 0;
    for (const auto &section : session.SheetData().Instances().List()) {
        rows += section->Keys().size();
    }
    CModelSession fresh;
    fresh.Translate(pdt, par);
    for (const auto &section : fresh.SheetData().Instances().List()) {
        rows -= section->Keys().size();
    }
    return rows == 0 && fresh.Messages().Rows().empty() && state.sections == StateUnderLaw(fresh).sections &&
           par_scanner::FindUnreadText(fresh.ParView().Text()).empty();
}

/// All problems of a session's first section, a line each: "key: problem".
std::string Problems(CModelSession &session) {
    std::string lines;
    for (const auto &section : session.SheetData().Instances().List()) {
        const std::string problem = kq_pdt::SectionProblem(*section);
        lines += problem.empty() ? "" : "section: " + kq_base::ToUtf8(problem) + "\n";
        for (std::size_t key = 0; key < section->Keys().size(); ++key) {
            const std::string text = kq_pdt::KeyProblem(*section, *section->Keys()[key]);
            lines += text.empty() ? "" : std::to_string(key) + ": " + kq_base::ToUtf8(text) + "\n";
        }
    }
    return lines;
}

struct TRow {
    const char *keys;  ///< what the template declares after `def_section name = 'S'; required;`
    const char *lines;
    std::size_t key;
    std::uint32_t cell;
    const char *value;
    const char *problems;
};

const char *const kText = "def_key name = 'k'; par = string { label = 'Popis' }; par = string { optional }; end_key";
const char *const kBroken =
    "0: Text obsahuje znaky, které soubor neudrží: apostrof, závorku, komentář nebo konec řádku\n";
const char *const kNames =
    "def_key name = 'ab'; par = number; end_key def_key name = 'a' + string; par = number; end_key"
    " def_key name = 'x' + number; multiple; par = number { optional }; end_key";
const char *const kTakenTwice =
    "0: Stejný název má i jiný řádek, jeho hodnoty tyto přepíšou\n"
    "1: Stejný název má i jiný parametr šablony, hodnoty se načtou do něj\n";

TEST(RowProblem, TellsWhatWouldNotReadBack) {
    const std::vector<TRow> rows = {
        {kText, "k = abc", 0, 1, "def", ""},
        {kText, "k = abc, d", 0, 1, "", "0: Hodnota \"Popis\" je prázdná a není volitelná\n"},
        {kText, "k = abc, d", 0, 1, "a b",
         "0: Hodnota \"Popis\" se ze souboru načte jako \"a\" (mezera a čárka oddělují hodnoty)\n"},
        {kText, "k = abc, d", 0, 1, "'a b'", ""},
        {kText, "k = abc, d", 0, 1, "a;b", ""},
        {kText, "k = abc, d", 0, 1, "a'b", kBroken},
        {kText, "k = abc, d", 0, 1, "12EF", kBroken},
        {kText, "k = abc, d", 0, 1, "(* x", kBroken},
        {kText, "k = abc, d", 0, 1, "a(* b", kBroken},
        {kText, "k = abc, d", 0, 2, "", "0: Hodnota se ze souboru načte jako \"<nedefinován>\"\n"},
        {kText, "k = abc, d", 0, 2, "=1", ""},
        {"def_key name = 'k'; par = string + 'b'; end_key", "k = ab", 0, 1, "", ""},
        {"def_key name = 'k'; par = string + string; end_key", "k = ab", 0, 1, "abc",
         "0: Hodnota se ze souboru načte jako \"a\"\n"},
        {"def_key name = 'k'; par = string { read_all }; end_key", "k = a", 0, 1, "a b,c", ""},
        {"def_key name = 'k'; par = string { read_all }; end_key", "k = a", 0, 1, "a, c",
         "0: Hodnota se ze souboru načte jako \"a,c\" (mezera a čárka oddělují hodnoty)\n"},
        // The second value slips into the place of the first.
        {"def_key name = 'k'; par = number { optional }; par = number { optional }; end_key", "k = 1, 2", 0, 1, "=1",
         "0: Hodnota se ze souboru načte jako \"2\"\n"},
        // A condition that a later line sets doesn't hold yet when the line is read.
        {"def_key name = 'k'; par = number { enable_if %v% = 1 }; end_key"
         " def_key name = 'm'; par = number { id = %v% }; end_key",
         "m = 1", 0, 1, "7", "0: Hodnota se ze souboru načte jako \"0\"\n"},
        {"def_key name = 'm'; par = number { id = %v% }; end_key"
         " def_key name = 'k'; par = number { enable_if %v% = 1 }; end_key",
         "m = 1", 1, 1, "7", ""},
        {kNames, "a1 = 1\nx1 = 1\nx1 = 2", 1, 1, "b", kTakenTwice},
        {kNames, "a1 = 1\nx1 = 1\nx1 = 2", 1, 1, "c", ""},
        {kNames, "a1 = 1\nx1 = 1\nx1 = 2", 3, 1, "1", ""},
        {kNames, "a1 = 1\nx1 = 1\nx1 = 2", 3, 2, "=1", "3: Řádek nemá žádnou hodnotu k zápisu, v souboru nebude\n"},
        {kNames, "a1 = 1", 1, 1, "", ""},
        {"def_key name = 'a' + string; multiple; par = number; end_key", "a1 = 1", 0, 1, "",
         "0: Název se ze souboru načte jinak, než je v šabloně\n"},
        {kNames, "a1 = 1", 1, 1, "b=c", kTakenTwice},
    };
    for (const TRow &row : rows) {
        CModelSession session;
        const std::string declares = std::string(row.keys).find("%v%") != std::string::npos ? "var %v%; " : "";
        const std::string pdt = "def_section " + declares + "name = 'S'; required; " + row.keys + " end_section";
        ASSERT_TRUE(session.Translate(pdt, std::string("[S]\n") + row.lines + "\n")) << session.MessageLines() << pdt;
        Enter(session, row.key, row.cell, row.value);
        const std::string before = session.Written();
        EXPECT_EQ(Problems(session).substr(0, std::string(row.problems).size()), row.problems)
            << row.keys << "\n"
            << before << Problems(session);
        EXPECT_EQ(Problems(session).empty(), *row.problems == '\0') << row.keys << "\n" << before << Problems(session);
        EXPECT_EQ(session.Written(), before);
        EXPECT_EQ(ReadsBack(session, pdt), *row.problems == '\0') << row.keys << "\n" << before;
    }
}

TEST(RowProblem, SectionsAreFoundByTheirNames) {
    struct TNamed {
        const char *pdt;
        const char *par;
        const char *typed;  ///< into the name of the last section
        const char *problems;
    };
    const std::vector<TNamed> rows = {
        {"def_section name = 'S' + string; multiple; end_section", "[Sa]\n[Sb]\n", "a", ""},
        {"def_section name = 'S' + string; multiple; end_section", "[Sa]\n[Sb]\n", "", ""},
        {"def_section name = 'S' + string; multiple; end_section", "[Sa]\n[Sb]\n", "a]b",
         "section: Hodnota se ze souboru načte jako \"a\""},
        {"def_section name = 'S' + string; multiple; end_section", "[Sa]\n[Sb]\n", "it's",
         "section: Text obsahuje znaky"},
        {"def_section name = 'Sab'; end_section def_section name = 'S' + string; multiple; end_section", "[Sa]\n", "ab",
         "section: Stejný název má i jiný parametr"},
    };
    for (const TNamed &row : rows) {
        CModelSession session;
        ASSERT_TRUE(session.Translate(row.pdt, row.par)) << session.MessageLines();
        kq_pdt::CSheetEdit edit(session.SheetData());
        TCellEditor *const editor = edit.OpenCell(*session.SheetData().Instances().List().back(), nullptr, 1);
        ASSERT_TRUE(editor != nullptr && editor->EditBox().UserType(row.typed) && edit.CloseCell(true));
        const std::string problems = Problems(session);
        EXPECT_TRUE(*row.problems == '\0' ? problems.empty() : problems.starts_with(row.problems)) << problems;
        EXPECT_EQ(ReadsBack(session, row.pdt), *row.problems == '\0') << session.Written();
    }
}

TEST(RowProblem, DependentSectionsOfOneNameReadBack) {
    const std::string pdt =
        "def_section name = 'S'; def_key name = 'n'; par = number { id = %n% }; end_key"
        " def_key name = 'm'; par = number { id = %m% }; end_key end_section"
        " def_section name = 'P' + %n%; depend_on = %n%; def_key name = 'k'; par = string; end_key end_section"
        " def_section name = 'P' + %m%; depend_on = %m%; def_key name = 'k'; par = string; end_key end_section";
    CModelSession session;
    ASSERT_TRUE(session.Translate(pdt, "[S]\nn = 3\nm = 3\n[P3]\nk = a\n[P3]\nk = b\n"));
    EXPECT_EQ(Problems(session), "");
    EXPECT_TRUE(ReadsBack(session, pdt));
    // A name that only fits takes the text if it comes first.
    const std::string fitting =
        "def_section name = 'Q'; def_key name = 'o'; par = number { id = %o% }; end_key end_section"
        " def_section name = 'P' + number; depend_on = %o%; end_section " +
        pdt;
    ASSERT_TRUE(session.Translate(fitting, "[Q]\no = 5\n[S]\nn = 3\nm = 4\n"));
    EXPECT_NE(Problems(session), "");
    EXPECT_FALSE(ReadsBack(session, fitting));
}

TEST(RowProblem, ExamplesReadBackAndUnknownRowsToo) {
    for (const std::string name : {"modbus/modbus", "meters/meters", "simulator/simulator", "modbus/modbus_errors",
                                   "meters/meters_errors", "simulator/simulator_errors"}) {
        const std::string base = std::string(KQ_SOURCE_DIR "/examples/") + name;
        const std::string pdt = base.ends_with("_errors") ? base.substr(0, base.size() - 7) : base;
        CModelSession session;
        session.Translate(kq_base::ToUtf8(ReadBytes(pdt + ".pdt")), kq_base::ToUtf8(ReadBytes(base + ".par")));
        const std::string problems = Problems(session);
        EXPECT_EQ(problems, "") << name;
    }
    CModelSession session;
    ASSERT_TRUE(session.Translate("def_section name = 'S'; def_key name = 'k'; par = number; end_key end_section",
                                  "[S]\nk = 1\nother = 1, (* x *) 2\nbare\n[Unknown]\nany = a b\n"));
    EXPECT_EQ(Problems(session), "");
    Enter(session, 1, 1, "it's");
    EXPECT_NE(Problems(session), "");
}

/// Whatever the number of rows, a row costs the same.
TEST(RowProblem, ManyRowsAreWalkedInLinearTime) {
    const std::string pdt =
        "def_section var %v%; name = 'S'; required; def_key name = 'first'; par = number { id = %v% }; end_key"
        " def_key name = 'ch' + number; multiple; par = number { enable_if %v% = 1 }; par = string; end_key "
        "end_section";
    const auto seconds = [&](std::size_t rows) {
        std::string par = "[S]\nfirst = 1\n";
        for (std::size_t row = 0; row < rows; ++row) {
            par += "ch" + std::to_string(row) + " = " + std::to_string(row) + ", text\n";
        }
        CModelSession session;
        EXPECT_TRUE(session.Translate(pdt, par));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(Problems(session), "");
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    const double few = seconds(2'000);
    const double many = seconds(40'000);
    EXPECT_LT(many, few * 20 * 5);
    std::cout << few << " s for 2,000 rows, " << many << " s for 40,000\n";
}

}  // namespace
