#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "platform/base/files.h"
#include "platform/view/text_view.h"
#include "platform/view/tool_box.h"
#include "tests/support/memory_disk.h"
#include "tests/support/recording_peers.h"

namespace {

TEST(TextEdit, ReplacesAtAPositionOrNotAtAll) {
    struct TRow {
        std::uint32_t line, column, count;
        std::string_view text, result;  ///< "-" where nothing may change
        std::size_t cursor;
    };
    constexpr std::string_view kText = "ab\r\n\ncd\rx\nlast";
    for (const TRow &row : {
             TRow{1, 1, 0, "x", "xab\r\n\ncd\rx\nlast", 1},
             {1, 3, 0, "x", "abx\r\n\ncd\rx\nlast", 3},
             {1, 3, 2, "x", "abx\ncd\rx\nlast", 3},
             {1, 3, 1, "", "ab\n\ncd\rx\nlast", 2},
             {2, 1, 1, "", "ab\r\ncd\rx\nlast", 4},
             {3, 5, 0, "y", "ab\r\n\ncd\rxy\nlast", 10},
             {3, 3, 2, "", "ab\r\n\ncd\nlast", 7},
             {4, 5, 0, "\n", "ab\r\n\ncd\rx\nlast\n", 15},
             {1, 1, 14, "z", "z", 1},
             {1, 2, 1, "b", kText, 2},
             {1, 1, 0, "", kText, 0},
             {0, 1, 0, "x", "-", 0},
             {1, 0, 0, "x", "-", 0},
             {1, 4, 0, "x", "-", 0},
             {2, 2, 0, "x", "-", 0},
             {5, 1, 0, "x", "-", 0},
             {4, 6, 0, "x", "-", 0},
             {1, 1, 15, "x", "-", 0},
             {4, 5, 1, "x", "-", 0},
             {0xFFFFFFFF, 1, 0, "x", "-", 0},
             {1, 0xFFFFFFFF, 0, "x", "-", 0},
             {1, 1, 0xFFFFFFFF, "x", "-", 0},
         }) {
        CTextView view;
        view.SetText(kText);
        view.SetSaved(true);
        const bool refused = row.result == "-";
        EXPECT_EQ(view.UserReplace(row.line, row.column, row.count, row.text), !refused) << row.line << row.column;
        EXPECT_EQ(view.Text(), refused ? kText : row.result) << row.line << ":" << row.column;
        EXPECT_EQ(view.CursorOffset(), row.cursor) << row.line << ":" << row.column;
        EXPECT_EQ(view.IsSaved(), view.Text() == kText);
        view.SetEnabled(false);
        EXPECT_FALSE(view.UserReplace(1, 1, 0, "x") || view.UserUndo() || view.UserSelect(0, 0));
    }
}

/// What the text view has to do, done plainly: every text that there was is kept whole.
class CPlainText {
public:
    std::string text;
    bool saved = true;

    void Edit(std::size_t offset, std::size_t length, std::string_view with) {
        if (text.substr(offset, length) != with) {
            Finish();
            text.replace(offset, length, with);
            Finish();
            saved = false;
        }
    }
    void ProgramSet(std::string_view with) {
        saved = saved && text == with;
        text = with;
    }
    void ProgramAppend(std::string_view with) {
        saved = saved && with.empty();
        text += with;
    }
    /// The text as it is now ends a step, if it is another one than before.
    void Finish() {
        if (text != texts_[position_]) {
            texts_.resize(++position_);
            texts_.push_back(text);
            saved_step_ = saved_step_ >= position_ ? std::string::npos : saved_step_;
        }
    }
    void Save() {
        Finish();
        saved = true;
        saved_step_ = position_;
    }
    bool Go(bool back) {
        Finish();
        if (back ? position_ == 0 : position_ + 1 == texts_.size()) {
            return false;
        }
        position_ = back ? position_ - 1 : position_ + 1;
        text = texts_[position_];
        saved = position_ == saved_step_;
        return true;
    }

private:
    std::vector<std::string> texts_ = {{}};
    std::size_t position_ = 0;
    std::size_t saved_step_ = 0;
};

/// Shows a text as a peer does that reads only what it is told of.
class CMirror : public CPeerFactory {
public:
    CMirror() : former_(SetPeerFactory(this)) {}
    CMirror(const CMirror &) = delete;
    CMirror &operator=(const CMirror &) = delete;
    ~CMirror() override { SetPeerFactory(former_); }
    std::unique_ptr<CViewPeer> MakePeer(CView & /*view*/) override { return std::make_unique<CPeer>(*this); }

    std::string text;

private:
    class CPeer : public CViewPeer {
    public:
        explicit CPeer(CMirror &mirror) : mirror_(mirror) {}
        void ViewChanged(CView &view, const TViewNotice &notice) override {
            const std::string_view now = dynamic_cast<CTextView &>(view).Text();
            if (notice.change == TViewChange::kContent) {
                mirror_.text = now;
            } else if (notice.change == TViewChange::kText) {
                const auto first = static_cast<std::size_t>(notice.first);
                mirror_.text.replace(first, static_cast<std::size_t>(notice.removed),
                                     now.substr(first, static_cast<std::size_t>(notice.inserted)));
            }
        }
        void AreaInvalidated(CView & /*view*/, const TRect & /*area*/) override {}

    private:
        CMirror &mirror_;
    };

    CPeerFactory *former_;
};

void ExpectSamePositions(const CTextView &view, std::mt19937 &random) {
    const std::string text(view.Text());
    const auto cursor = static_cast<std::ptrdiff_t>(view.CursorOffset());
    const auto line = static_cast<std::size_t>(std::count(text.begin(), text.begin() + cursor, '\n'));
    const std::string before = text.substr(0, view.CursorOffset());
    EXPECT_EQ(view.CursorLine(), line);
    EXPECT_EQ(view.CursorColumn(), before.size() - (before.rfind('\n') + 1));
    std::vector<std::pair<std::size_t, std::size_t>> lines;  // offset and length
    for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
        end = text.find('\n', start);
        std::size_t length = std::min(end, text.size()) - start;
        length -= end != std::string::npos && length > 0 && text[end - 1] == '\r' ? 1 : 0;
        lines.emplace_back(start, length);
    }
    ASSERT_EQ(view.LineCount(), lines.size());
    const auto some_line = static_cast<std::uint32_t>(random() % (lines.size() + 2));
    const auto some_column = static_cast<std::uint32_t>(random() % 8);
    const bool exists =
        some_line > 0 && some_line <= lines.size() && some_column > 0 && some_column - 1 <= lines[some_line - 1].second;
    std::size_t offset = 0;
    ASSERT_EQ(view.FindOffset(some_line, some_column, offset), exists) << some_line << ":" << some_column;
    if (exists) {
        EXPECT_EQ(offset, lines[some_line - 1].first + some_column - 1);
    }
}

TEST(TextEdit, RandomSessionsAgreeWithWholeTexts) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        CMemoryDisk disk;
        CMirror mirror;
        CTextView view;
        view.MakePeers();
        CPlainText plain;
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t bound) { return random() % bound; };
        const auto any_text = [&] {
            std::string text;
            for (std::size_t count = below(9); count > 0; --count) {
                text += "ab \r\n"[below(5)];
            }
            return text;
        };
        for (int step = 0; step < 250; ++step) {
            const std::string text = any_text();
            const std::size_t offset = below(plain.text.size() + 1);
            const std::size_t length = below(std::min<std::size_t>(plain.text.size() - offset, 5) + 1);
            switch (below(10)) {
                case 0:
                case 1:
                case 2:
                    EXPECT_TRUE(view.UserReplaceAt(offset, length, text));
                    plain.Edit(offset, length, text);
                    break;
                case 3:
                    EXPECT_TRUE(view.UserSelect(offset, offset + length) && view.UserReplaceSelection(text));
                    plain.Edit(offset, length, text);
                    break;
                case 4:
                    view.Clear();
                    plain.ProgramSet({});
                    [[fallthrough]];
                case 5:
                    view.InsertText(text);
                    plain.ProgramAppend(text);
                    break;
                case 6: {
                    std::string whole = plain.text;
                    whole.replace(offset, length, text);
                    view.SetText(whole);
                    plain.ProgramSet(whole);
                    break;
                }
                case 7:
                    if (std::string error; below(2) == 0) {
                        EXPECT_TRUE(view.SaveToFile("a.par", error));
                        plain.Save();
                    } else {
                        view.SetSaved(false);
                        plain.saved = false;
                    }
                    break;
                default: {
                    const bool back = below(5) > 1;
                    const bool can = back ? view.CanUndo() : view.CanRedo();
                    const bool went = plain.Go(back);
                    EXPECT_EQ(can, went);
                    EXPECT_EQ(back ? view.UserUndo() : view.UserRedo(), went);
                    break;
                }
            }
            ASSERT_EQ(view.Text(), plain.text) << seed << " " << step;
            ASSERT_EQ(view.IsSaved(), plain.saved) << seed << " " << step;
            ASSERT_EQ(mirror.text, plain.text) << seed << " " << step;
            ASSERT_NO_FATAL_FAILURE(ExpectSamePositions(view, random)) << seed << " " << step;
        }
        while (plain.Go(false)) {
        }
        const std::string last = plain.text;
        while (view.UserUndo()) {
        }
        EXPECT_EQ(view.Text(), "");
        while (view.UserRedo()) {
        }
        EXPECT_EQ(view.Text(), last);
        EXPECT_EQ(mirror.text, last);
    }
}

TEST(TextEdit, ATranslationIsOneStep) {
    CMemoryDisk disk;
    CTextView view;
    std::string error;
    ASSERT_TRUE(kq_base::CDisk::Current().Save("a.par", "[A]\n", error) && view.LoadFromFile("a.par", error));
    EXPECT_FALSE(view.UserUndo()) << "the history begins with the load";
    EXPECT_TRUE(view.UserReplace(2, 1, 0, "x=1\n"));
    const auto translate = [&view](std::string_view text) {
        view.Clear();
        for (const char character : text) {
            view.InsertChar(character);
        }
    };
    translate("[A]\n  x = 1\n");
    view.FinishStep();
    translate("[A]\n  x = 2\n");
    translate("[A]\n  x = 3\n");
    EXPECT_TRUE(view.UserUndo());
    EXPECT_EQ(view.Text(), "[A]\n  x = 1\n");
    EXPECT_EQ(view.CursorOffset(), 11U) << "after what changed";
    EXPECT_TRUE(view.UserUndo());
    EXPECT_EQ(view.Text(), "[A]\nx=1\n");
    EXPECT_TRUE(view.UserUndo());
    EXPECT_TRUE(view.IsSaved());
    EXPECT_FALSE(view.UserUndo());
    EXPECT_TRUE(view.UserRedo());
    view.SetText(std::string(view.Text()));
    translate(std::string(view.Text()));
    EXPECT_TRUE(view.UserRedo()) << "an equal text is no step, and drops none";
    ASSERT_TRUE(view.LoadFromFile("a.par", error));
    EXPECT_FALSE(view.UserRedo()) << "a later load is a step";
    EXPECT_TRUE(view.UserUndo());
    EXPECT_EQ(view.Text(), "[A]\n  x = 1\n");
    view.SetHistoryKept(false);
    EXPECT_TRUE(view.UserReplace(1, 1, 0, "y"));
    EXPECT_FALSE(view.UserUndo() || view.UserRedo());
}

TEST(TextEdit, TypingJoinsUpToTheNextWord) {
    CTextView view;
    for (const char character : std::string_view("ab c\nd")) {
        EXPECT_TRUE(view.UserReplaceAt(view.CursorOffset(), 0, {&character, 1}, true));
    }
    std::string texts;
    while (view.UserUndo()) {
        texts.append(view.Text()) += '|';
    }
    EXPECT_EQ(texts, "ab c|ab ||");
    view.UserReplaceAt(0, 0, "x", true);
    view.SetSaved(true);
    view.UserReplaceAt(1, 0, "y", true);
    view.UserUndo();
    EXPECT_EQ(view.Text(), "x") << "a saved text ends a step";
    EXPECT_TRUE(view.IsSaved());
}

TEST(TextEdit, TheHistoryStaysBelowItsBound) {
    CTextView view;
    constexpr std::size_t kSize = 1000000;
    view.SetText(std::string(kSize, 'a'));
    view.SetSaved(true);
    for (char letter = 'b'; letter <= 'f'; ++letter) {
        view.UserReplaceAt(0, kSize, std::string(kSize, letter));
    }
    view.UserReplaceAt(0, kSize, {});
    EXPECT_TRUE(view.UserUndo()) << "the last step always stays";
    EXPECT_EQ(view.Text(), std::string(kSize, 'f'));
    EXPECT_FALSE(view.UserUndo());
    EXPECT_FALSE(view.IsSaved()) << "the saved text can't be reached any more";
    view.SetText({});
    for (int edit = 0; edit < 40000; ++edit) {
        view.UserReplaceAt(0, 0, "x");
    }
    int steps = 0;
    while (view.UserUndo()) {
        ++steps;
    }
    EXPECT_GT(steps, 10000);
    EXPECT_LT(steps, 40000);
}

TEST(TextEdit, ToolBoxWithUndoAndRedo) {
    CTextView view;
    CToolBox &tools = view.ToolBox();
    std::vector<std::uint32_t> commands;
    for (const CToolBox::TItem &item : tools.Items()) {
        commands.push_back(item.command);
    }
    EXPECT_EQ(commands, (std::vector<std::uint32_t>{0xC0, 0xC1, 0xC3, 0, 0xC4, 0xC5, 0, 0xC6, 0xC7}));
    EXPECT_FALSE(tools.UserPress(cmTextUndo) || tools.UserPress(cmTextRedo));
    view.InsertText("a");
    EXPECT_TRUE(tools.UserPress(cmTextUndo));
    ProcessEvents();
    EXPECT_EQ(view.Text(), "");
    EXPECT_FALSE(tools.IsEnabled(cmTextUndo));
    EXPECT_TRUE(tools.UserPress(cmTextRedo));
    ProcessEvents();
    EXPECT_EQ(view.Text(), "a");
    TEvent other{.event_class = ecCommand, .code = cmTextSave};
    view.ReceiveEvent(other);
    EXPECT_FALSE(other.stopped) << "not the view's to handle";
    view.EndToolBox();
    EXPECT_TRUE(view.ToolBox().IsEnabled(cmTextUndo)) << "a new one shows how things are";
}

TEST(TextEdit, ThePeerHearsWhichPieceChanged) {
    CRecordingFactory factory;
    CTextView view;
    view.MakePeers();
    view.InsertText("abc");
    view.UserSelect(1, 2);
    factory.Take();
    view.UserReplaceSelection("XY");
    const TViewNotice cursor{.change = TViewChange::kCursor};
    EXPECT_EQ(factory.Take(),
              (std::vector{TViewNotice{.change = TViewChange::kText, .first = 1, .removed = 1, .inserted = 2}, cursor,
                           TViewNotice{.change = TViewChange::kSelection}}));
    view.UserUndo();
    EXPECT_EQ(
        factory.Take(),
        (std::vector{TViewNotice{.change = TViewChange::kText, .first = 1, .removed = 2, .inserted = 1}, cursor}));
    view.UserReplaceAt(0, 1, "a");
    EXPECT_EQ(factory.Take(), (std::vector{cursor})) << "an equal text is no change";
}

}  // namespace
