// Sessions at random: a template, edits of cells and channels, additions and deletions, undo and redo, changes of the
// tab.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>

#include "configurator/window_state.h"
#include "driver/channels/text_out.h"
#include "tests/model/edit_law.h"
#include "tests/support/configurator_window.h"

namespace {

/// What a person sees of a session, and what a save would write.
struct TShown {
    std::string texts;
    std::string views;

    friend bool operator==(const TShown &left, const TShown &right) = default;
};

class CRandomSession {
public:
    CRandomSession(std::uint32_t seed, const TTemplate &made) : bench_(made.pdt), dice_(seed) {
        modules_.Hold(made.modules);
        for (const TModule &module : made.modules) {
            bench_.Write("./" + module.name + ".dll", "loaded from the real directory");
            bench_.Write("./" + module.name + ".pdt", module.pdt);
        }
        // Required sections may define channels that contradict each other, which only a reading of them finds.
        opened_ = bench_.Create() && bench_.Tab(CConfiguratorWindow::kSheetTab) && TabThere() && TabBack();
        if (opened_) {
            shown_.push_back(Look());
        }
    }

    bool IsOpened() const { return opened_; }
    std::size_t Changes() const { return changes_; }

    void Step() {
        const std::uint32_t kind = dice_.Below(100);
        if (kind < 12) {
            Undo();
        } else if (kind < 22) {
            Redo();
        } else {
            if (kind < 80) {
                EditCell();
            } else if (kind < 92) {
                Delete();
            } else {
                EditChannel();
            }
            ProcessEvents();
            Remember();
        }
    }

    /// Back to the beginning, and forth to the end again.
    void GoThroughHistory() {
        bool undone = false;
        while (bench_.window->UserUndo()) {
            undone = true;
            CheckUndone();
        }
        EXPECT_EQ(present_, 0U);
        if (undone) {  // a value that was refused counts as a change, but is no step
            EXPECT_EQ(bench_.window->IsModified(), modified_at_first_);
        }
        while (Redo()) {
        }
        EXPECT_EQ(present_, shown_.size() - 1);
        EXPECT_EQ(Look(), shown_.back());
    }

    /// Through the text into another model. False if the text has an error, as it may if a row's values don't read.
    bool Translate() {
        const bool reads = !bench_.window->UserNextProblem();
        const std::uint32_t greatest = greatest_table_;
        known_tables_.clear();
        EXPECT_TRUE(TabThere());
        if (!TabBack()) {
            EXPECT_FALSE(reads) << bench_.Rows();
            return false;
        }
        shown_ = {Look()};
        present_ = 0;
        modified_at_first_ = bench_.window->IsModified();
        EXPECT_TRUE(known_tables_.empty() || *known_tables_.begin() > greatest) << "a table's id came twice";
        return true;
    }

private:
    kq_pdt::CWindowSession &Session() { return TConfiguratorAccess::Session(*bench_.window); }
    CSheetView &Sheet() { return bench_.window->Sheet(); }

    /// To the text, even if channels have no type.
    bool TabThere() {
        bench_.answers = {TBoxAnswer::kYes};
        const bool changed = bench_.Tab(CConfiguratorWindow::kTextTab);
        bench_.answers.clear();
        return changed;
    }
    bool TabBack() { return bench_.Tab(CConfiguratorWindow::kSheetTab); }

    void LookAt(CSheetView &sheet, std::uint32_t table, std::string &text) {
        const std::size_t columns = sheet.Columns(table).size();
        for (std::uint32_t row = 1; row <= sheet.ShownRowCount(table); ++row) {
            for (std::uint32_t column = 1; column <= columns; ++column) {
                const CSheetView::TCell cell = sheet.ReadCell(table, row, column);
                text += cell.disabled ? "[off]" : "[" + std::string(cell.text.View()) + "]";
            }
            text += '\n';
            if (const std::uint32_t below = sheet.SubTable(table, row)) {
                known_tables_.insert(below);
                greatest_table_ = std::max(greatest_table_, below);
                LookAt(sheet, below, text);
            }
        }
        text += "-\n";
    }

    TShown Look() {
        TShown shown;
        CTextView par;
        CTextView dmf;
        {
            CTextOut out(&par);
            Session().SheetData().WriteParText(out);
            CTextOut dmf_out(&dmf);
            Session().SheetData().Ranges().WriteDmfText(dmf_out);
        }
        shown.texts = std::string(par.Text()) + std::string(dmf.Text());
        LookAt(Sheet(), 1, shown.views);
        LookAt(bench_.window->Channels(), 1, shown.views);
        return shown;
    }

    void Remember() {
        const TShown now = Look();
        if (bench_.window->RedoName().empty()) {
            shown_.resize(present_ + 1);
        }
        if (now == shown_[present_]) {
            return;
        }
        ++changes_;
        EXPECT_TRUE(bench_.window->IsModified());
        EXPECT_FALSE(bench_.window->UndoName().empty());
        shown_.resize(++present_);
        shown_.push_back(now);
    }

    /// A step may have changed nothing that is seen.
    void CheckUndone() {
        const TShown now = Look();
        if (now == shown_[present_]) {
            return;
        }
        ASSERT_GT(present_, 0U);
        --present_;
        EXPECT_EQ(now.texts, shown_[present_].texts);
        EXPECT_EQ(now.views, shown_[present_].views);
    }

    void Undo() {
        if (bench_.window->UserUndo()) {
            CheckUndone();
        }
    }

    bool Redo() {
        if (!bench_.window->UserRedo()) {
            return false;
        }
        const TShown now = Look();
        if (now != shown_[present_] && present_ + 1 < shown_.size()) {
            ++present_;
        }
        EXPECT_EQ(now.texts, shown_[present_].texts);
        EXPECT_EQ(now.views, shown_[present_].views);
        return true;
    }

    /// A table at random with its rows.
    std::uint32_t ChooseTable() {
        std::uint32_t table = 1;
        while (!dice_.OneIn(4)) {
            const std::uint32_t below = Sheet().SubTable(table, 1 + dice_.Below(Sheet().RowCount(table) + 1));
            if (below == 0) {
                break;
            }
            table = below;
        }
        return table;
    }

    void EditCell() {
        const std::uint32_t table = ChooseTable();
        const auto columns = static_cast<std::uint32_t>(Sheet().Columns(table).size());
        const std::uint32_t rows = Sheet().ShownRowCount(table);
        const std::uint32_t row = dice_.OneIn(4) ? rows : 1 + dice_.Below(rows + 1);
        for (std::uint32_t column = columns; column > 0; --column) {
            if (Sheet().UserEdit(table, row, column)) {
                ChangeEditor(Sheet());
                return;
            }
        }
    }

    void EditChannel() {
        CSheetView &channels = bench_.window->Channels();
        if (channels.UserEdit(1, 1 + dice_.Below(channels.RowCount(1) + 1), 3 + dice_.Below(2))) {
            ChangeEditor(channels);
        }
    }

    void ChangeEditor(CSheetView &sheet) {
        static const std::vector<std::string> kTexts = {"",           "0", "1", "2",   "7", "19",
                                                        "4294967295", "a", "B", "x y", "'"};
        CView *editor = sheet.CellEditor();
        if (editor == nullptr) {
            return;
        }
        if (auto *count = dynamic_cast<CIntegerCountBox *>(editor)) {
            count->UserType(dice_.Pick(kTexts));
        } else if (auto *edit = dynamic_cast<CEditBox *>(editor)) {
            edit->UserType(dice_.Pick(kTexts));
        } else if (auto *combo = dynamic_cast<CComboBox *>(editor)) {
            if (combo->EntryCount() == 0 || dice_.OneIn(3)) {
                combo->UserType(dice_.Pick(kTexts));
            } else {
                combo->UserSelect(1 + dice_.Below(combo->EntryCount()));
            }
        }
        if (dice_.OneIn(8)) {
            sheet.UserCancel();
        } else if (dice_.OneIn(2)) {
            sheet.UserCommit();
        } else {
            sheet.UserSelect(1, 1, 1);
        }
    }

    void Delete() {
        const std::uint32_t table = ChooseTable();
        Sheet().UserSelect(table, 1 + dice_.Below(Sheet().RowCount(table) + 1), 1);
        bench_.window->SheetToolBox().UserPress(cmDelete);
    }

    CModuleDirectory modules_;
    CWindowBench bench_;
    CDice dice_;
    bool opened_ = false;
    std::vector<TShown> shown_;  ///< the states of the history, each another than the one before
    std::size_t present_ = 0;
    std::size_t changes_ = 0;
    bool modified_at_first_ = false;
    std::set<std::uint32_t> known_tables_;
    std::uint32_t greatest_table_ = 0;
};

std::uint32_t FromEnvironment(const char *name, std::uint32_t otherwise) {
    const char *const text = std::getenv(name);
    return text != nullptr ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

TEST(WindowRandom, UndoLeadsBackThroughEveryStateAndRedoForthAgain) {
    const std::uint32_t first = FromEnvironment("KQ_WINDOW_SEED", 1);
    const std::uint32_t count = FromEnvironment("KQ_WINDOW_COUNT", 60);
    std::size_t changes = 0;
    std::size_t opened = 0;
    std::size_t translated = 0;
    for (std::uint32_t seed = first; seed < first + count && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        CRandomSession session(seed, MakeTemplate(seed, MakeKnobs("modules=50,module_keys=30")));
        if (!session.IsOpened()) {
            continue;
        }
        ++opened;
        for (std::uint32_t round = 0; round < 2; ++round) {
            for (std::uint32_t step = 0; step < 60 && !HasFailure(); ++step) {
                session.Step();
            }
            session.GoThroughHistory();
            if (!session.Translate()) {
                break;
            }
            ++translated;
        }
        changes += session.Changes();
    }
    std::cout << opened << " sessions, " << changes << " changes, " << translated << " translations\n";
    EXPECT_GT(opened * 2, count);
    EXPECT_GT(changes, opened);
    EXPECT_GT(translated, opened / 2);
}

}  // namespace
