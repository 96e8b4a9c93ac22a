#include "tools/session/search_person.h"

#include <gtest/gtest.h>

#include "configurator/kq_pdt.h"
#include "platform/view/labels.h"
#include "platform/view/tree_viewer.h"

namespace {

/// Lets the person act wherever a loop has nothing to do.
class CPersonSource final : public CEventSource {
public:
    explicit CPersonSource(CSearchPerson &person) : person_(person), former_(SetEventSource(this)) {}
    ~CPersonSource() override { SetEventSource(former_); }
    CPersonSource(const CPersonSource &) = delete;
    CPersonSource &operator=(const CPersonSource &) = delete;

    void Wait(CView &window) override { person_.Act(window); }
    void ModalBegan(CView &window) override { person_.WindowBegan(window); }
    void ModalEnded(CView &window, std::uint32_t code) override { person_.WindowEnded(window, code); }

private:
    CSearchPerson &person_;
    CEventSource *former_;
};

constexpr std::uint32_t kFound = 0x4B0;
constexpr std::uint32_t kCancel = 0x4B2;

/// A search that is over before its window runs.
class CProgress final : public CWindow {
public:
    CProgress() {
        Init({}, 0, "Search", nullptr, nullptr);
        Register(line_);
        Register(button_);
        button_.SetReceiver(this);
        MakeEvent(*this, ecCommand, kFound);
    }
    void ReceiveEvent(TEvent &event) override {
        if (event.code == kFound) {
            MakeEvent(*this, ecCommand, kCloseLoop);
        } else if (event.code == kCancel) {
            cancelled_ = true;
            line_.SetText("Wait");
        }
    }
    std::uint32_t Exec() override { return CWindow::Exec() == kCloseLoop && cancelled_ ? kCloseLoop : kEndLoop; }

private:
    CStaticText line_{"Searching"};
    CButton button_{"Cancel", kCancel};
    bool cancelled_ = false;
};

/// Two devices of which one may be chosen, a plain item, and an item below it.
class CResult final : public CWindow {
public:
    CResult() {
        Init({}, 0, "Found", nullptr, nullptr);
        tools_.AddButton("Apply", cmApply, 0);
        tools_.SetReceiver(this);
        Dock(&tools_);
        tree_.Init({}, {});
        Register(tree_);
        tree_.Pane().AddItem(nullptr, "A", kTreeItemHasMark, 1);
        TTreeItem &plain = tree_.Pane().AddItem(nullptr, "B");
        tree_.Pane().AddItem(&plain, "C", kTreeItemHasMark, 2);
    }
    void ReceiveEvent(TEvent &event) override {
        if (event.code == cmApply || event.code == kCloseRequest) {
            MakeEvent(*this, ecCommand, event.code == cmApply ? kEndLoop : kCloseLoop);
        }
    }

private:
    CToolBox tools_;
    CTreeViewer tree_;
};

/// The event that a window leaves when the person has done with it.
template <class Window>
std::string EventOf(CSearchPerson &person, CEventRecorder &recorder) {
    const CPersonSource source(person);
    CWindow owner;
    Window window;
    window.RunModal(owner);
    return recorder.Take().dump();
}

TEST(SearchPerson, CancelsEvenASearchThatIsOver) {
    CEventRecorder recorder;
    CSearchPerson person(recorder);
    EXPECT_EQ(EventOf<CProgress>(person, recorder), R"([{"window":"Search","lines":["Searching"],"ended":4}])");
    person.CancelSearches(true);
    EXPECT_EQ(EventOf<CProgress>(person, recorder), R"([{"window":"Search","lines":["Wait"],"ended":5}])");
    person.CancelSearches(false);
    EXPECT_EQ(EventOf<CProgress>(person, recorder), R"([{"window":"Search","lines":["Searching"],"ended":4}])");
}

TEST(SearchPerson, ClosesOrConfirmsWhatWasFound) {
    CEventRecorder recorder;
    CSearchPerson person(recorder);
    const std::string tree =
        R"([{"window":"Found","tree":[{"key":1,"text":"A","mark":true,"checked":false,"items":[]},)"
        R"({"key":null,"text":"B","mark":false,"checked":false,"items":[)"
        R"({"key":2,"text":"C","mark":true,"checked":false,"items":[]}]}],"ended":5}])";
    EXPECT_EQ(EventOf<CResult>(person, recorder), tree);
    person.ConfirmItems({2, 7});
    std::string confirmed = tree;
    confirmed.replace(confirmed.find("false,\"items\":[]}]}"), 5, "true");
    confirmed.replace(confirmed.find("\"ended\":5"), 9, "\"ended\":4");
    EXPECT_EQ(EventOf<CResult>(person, recorder), confirmed);
    person.CloseResults();
    EXPECT_EQ(EventOf<CResult>(person, recorder), tree);
}

}  // namespace
