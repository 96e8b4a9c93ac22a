// The windows of a search with drivers that are functions here, on as many threads as they like.

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

#include "configurator/search_progress.h"
#include "configurator/search_result.h"
#include "configurator/texts.h"
#include "configurator/window_state.h"
#include "tests/support/configurator_window.h"
#include "tests/support/temporary_directory.h"

namespace {

using kq_pdt::CSearchProgress;
using kq_pdt::CSearchResult;
using kq_pdt::TSearchEntries;

constexpr std::uint32_t kCancelSearch = 0x4B2;

/// What the driver does when it is called; its entries carry no context.
struct TDriver {
    std::function<bool(KQAddItemEntry *, KQProgressEntry *, void *)> load;
    std::function<void(KQIsCheckedEntry *)> put;
};
TDriver driver;

KQTruth Load(KQPath /*path*/, KQAddItemEntry *add_item, KQProgressEntry *progress, void *cancel) {
    return static_cast<KQTruth>(driver.load(add_item, progress, cancel));
}
void Put(KQIsCheckedEntry *is_checked) { driver.put(is_checked); }

void Add(KQAddItemEntry *add_item, std::uint32_t parent, std::uint32_t key, std::uint32_t flags = 2) {
    add_item(parent, key, 0, "x", 0, nullptr, flags);
}

template <class View>
View &Find(const CView &window) {
    for (CView *child : window.Children()) {
        if (auto *view = dynamic_cast<View *>(child)) {
            return *view;
        }
    }
    throw std::logic_error("no such view");
}

/// A person who does something when a window begins to run, and when nothing waits there.
class CPerson final : private CEventSource {
public:
    CPerson() : former_(SetEventSource(this)) {}
    ~CPerson() override { SetEventSource(former_); }
    CPerson(const CPerson &) = delete;
    CPerson &operator=(const CPerson &) = delete;

    std::function<void(CView &)> begins;
    /// True if it did something; otherwise the person waits.
    std::function<bool(CView &)> acts;

private:
    void ModalBegan(CView &window) override {
        if (begins) {
            begins(window);
        }
    }
    void Wait(CView &window) override {
        if (!acts || !acts(window)) {
            WaitForEvent();
        }
    }

    CEventSource *former_;
};

/// The windows of one search, in the order in which a session has them.
class CSearch {
public:
    CSearch() {
        owner.Init({100, 100, 700, 500}, 0, "owner", nullptr, nullptr);
        entries.load = Load;
        entries.put = Put;
        result.emplace(owner, Put);
        progress.emplace(owner, entries, "d.TMP");
        result->SetProgress(&*progress);
    }
    std::uint32_t Run() {
        EXPECT_TRUE(progress->Start());
        const std::uint32_t code = progress->RunModal(owner);
        result->SetProgress(nullptr);
        return code;
    }
    CTreeViewerPane &Tree() { return Find<CTreeViewer>(*result).Pane(); }
    std::string Lines() const {
        std::string lines;
        for (const CView *child : progress->Children()) {
            if (const auto *line = dynamic_cast<const CStaticText *>(child)) {
                lines += line->Text() + "|";
            }
        }
        return lines;
    }

    CWindow owner;
    TSearchEntries entries{nullptr};
    std::optional<CSearchResult> result;
    std::optional<CSearchProgress> progress;
};

TEST(DeviceSearch, ItemsOfSeveralThreadsKeepTheOrderOfEach) {
    constexpr std::uint32_t kThreads = 4;
    constexpr std::uint32_t kItems = 25000;
    driver.load = [](KQAddItemEntry *add_item, KQProgressEntry *progress, void *) {
        std::vector<std::thread> threads;
        for (std::uint32_t thread = 1; thread <= kThreads; ++thread) {
            threads.emplace_back([add_item, progress, thread] {
                Add(add_item, 0, thread);
                for (std::uint32_t item = 1; item <= kItems; ++item) {
                    Add(add_item, thread, thread * 0x10000 + item, 4);
                    if (item % 1000 == 0) {
                        progress(0, nullptr, 0, "still", 1, "ab");
                    }
                }
            });
        }
        for (std::thread &thread : threads) {
            thread.join();
        }
        return true;
    };
    CSearch search;
    EXPECT_EQ(search.Run(), kEndLoop);
    EXPECT_EQ(search.Lines(), "|still|a|");
    ASSERT_EQ(search.Tree().Items().size(), kThreads);
    for (const auto &parent : search.Tree().Items()) {
        ASSERT_EQ(parent->items.size(), kItems);
        for (std::uint32_t item = 1; item <= kItems; ++item) {
            ASSERT_EQ(parent->items[item - 1]->key, *parent->key * 0x10000 + item);
        }
    }
}

TEST(DeviceSearch, DriverThatGoesOnCallingIsHeardUntilTheSearchIsOver) {
    std::atomic<bool> stop = false;
    std::atomic<std::uint32_t> calls = 0;
    std::atomic<std::uint32_t> checked = 0;
    KQIsCheckedEntry *const is_checked = kq_pdt::IsSearchItemChecked;
    std::vector<std::thread> late;
    const auto more_calls = [&calls] {
        for (const std::uint32_t before = calls; calls < before + 100;) {
            std::this_thread::yield();
        }
    };
    driver.load = [&](KQAddItemEntry *add_item, KQProgressEntry *progress, void *) {
        Add(add_item, 0, 7);
        for (int thread = 0; thread < 2; ++thread) {
            late.emplace_back([&, add_item, progress] {
                while (!stop) {
                    Add(add_item, 7, 8);
                    progress(0, "late", 0, "late", 0, "late");
                    checked += is_checked(7);
                    ++calls;
                    std::this_thread::sleep_for(std::chrono::microseconds(20));
                }
            });
        }
        return true;
    };
    driver.put = [&](KQIsCheckedEntry *asked) {
        EXPECT_EQ(asked(7), 1);
        EXPECT_EQ(asked(8), 0);
        more_calls();
        EXPECT_GT(checked, 0U) << "any thread may ask meanwhile";
    };
    {
        CSearch search;
        EXPECT_EQ(search.Run(), kEndLoop);
        search.progress.reset();
        EXPECT_EQ(checked, 0U);
        CPerson person;
        std::size_t shown = 0;
        person.acts = [&](CView &window) {
            const std::size_t before = std::exchange(shown, search.Tree().Items()[0]->items.size());
            if (before != 0 && shown > before) {
                search.Tree().UserTag(*search.Tree().Items()[0], true);
                Find<CToolBox>(window).UserPress(cmApply);
            }
            return false;
        };
        EXPECT_EQ(search.result->RunModal(search.owner), kEndLoop);
        kq_pdt::EndSearchReports();
        more_calls();
        EXPECT_TRUE(kq_pdt::TakeSearchReports().empty());
    }
    const std::uint32_t before = checked;
    more_calls();
    stop = true;
    for (std::thread &thread : late) {
        thread.join();
    }
    EXPECT_EQ(checked, before);
    ProcessEvents();
}

TEST(DeviceSearch, CancelOnlyAsksTheDriverToComeBack) {
    struct TRow {
        std::uint32_t command;
        bool found;
    };
    for (const TRow row : {TRow{kCancelSearch, true}, TRow{kCancelSearch, false}, TRow{kCloseRequest, true}}) {
        std::atomic<bool> deaf = true;
        driver.load = [&](KQAddItemEntry *add_item, KQProgressEntry *progress, void *cancel) {
            EXPECT_EQ(kq_os::WaitForSingleObject(cancel, 20000), kq_os::kWaitObject0);
            Add(add_item, 0, 1);
            progress(0, "late", 0, "late", 0, "late");
            while (deaf) {
                std::this_thread::yield();
            }
            return row.found;
        };
        CSearch search;
        CPerson person;
        std::size_t steps = 0;
        person.begins = [&](CView &window) { MakeEvent(window, ecCommand, row.command); };
        person.acts = [&](CView &window) {
            EXPECT_FALSE(Find<CButton>(window).UserPress());
            // Whatever else is meant to end a window, the driver is still at work.
            MakeEvent(search.owner, ecCommand, steps % 2 == 0 ? kEndLoop : kCloseLoop);
            deaf = ++steps < 20;
            return deaf.load();
        };
        EXPECT_EQ(search.Run(), kCloseLoop);
        EXPECT_GE(steps, 20U);
        EXPECT_EQ(search.Lines(), "|" + std::string(kq_pdt::texts::kSearchIsEnding) + "||");
    }
}

TEST(DeviceSearch, ProgressIsAsWideAsItsWidestLineWas) {
    struct TRow {
        std::string_view line1, line2, line3;
        std::int32_t width;
    };
    // 26 characters are the first text's, 7 units each, and 30 units are beside them.
    const TRow rows[] = {
        {"", kq_pdt::texts::kSearching, "", 212},
        {"a", "b", "c", 212},
        {"a", "b", "exactly forty characters are in this one", 310},
        {"", "", "", 310},
    };
    CSearch search;
    for (const TRow &row : rows) {
        search.progress->ShowLines({std::string(row.line1), std::string(row.line2), std::string(row.line3)});
        const TRect &area = search.progress->Rect();
        EXPECT_EQ(area.width, row.width);
        EXPECT_EQ(area.depth, 140);
        std::int32_t y = 10;
        for (const CView *child : search.progress->Children()) {
            if (const auto *line = dynamic_cast<const CStaticText *>(child)) {
                const std::int32_t width = GetTextW(line->Text());
                EXPECT_EQ(line->Rect(), (TRect{area.width / 2 - width / 2, y, width, GetTextD()}));
                y += GetTextD() + 10;
            }
        }
        EXPECT_EQ(Find<CButton>(*search.progress).Rect().x, area.width / 2 - 45);
        EXPECT_EQ(Find<CButton>(*search.progress).Rect().y, 90);
    }
}

TEST(DeviceSearch, ExclusiveItemLeavesNoSiblingChecked) {
    constexpr std::uint32_t kMany = 100000;
    CSearch search;
    CTreeViewerPane &tree = search.Tree();
    TTreeItem &exclusive = tree.AddItem(nullptr, "one", kTreeItemHasMark | kTreeItemExclusive, 1);
    TTreeItem &plain = tree.AddItem(nullptr, "none");
    TTreeItem &below = tree.AddItem(&exclusive, "below", kTreeItemHasMark, 2);
    for (std::uint32_t key = 0; key < kMany; ++key) {
        tree.UserTag(tree.AddItem(nullptr, "other", kTreeItemHasMark, 10 + key), true);
    }
    EXPECT_TRUE(tree.UserTag(below, true));
    EXPECT_FALSE(tree.UserTag(plain, true));
    EXPECT_EQ(tree.TaggedItems().size(), kMany + 1);
    tree.UserTag(exclusive, true);
    EXPECT_EQ(tree.TaggedItems(), (std::vector<TTreeItem *>{&below, &exclusive}));
    TTreeItem &other = *tree.FindItem(10);
    EXPECT_FALSE(other.Has(kTreeItemTagged));
    tree.UserTag(other, true);
    EXPECT_TRUE(exclusive.Has(kTreeItemTagged)) << "only an exclusive item clears the others";
    tree.UserTag(exclusive, false);
    EXPECT_EQ(tree.TaggedItems(), std::vector<TTreeItem *>{&below}) << "so does taking its mark away";
}

/// A session whose driver searches as a text says.
class CSearchingSession {
public:
    explicit CSearchingSession(const std::string &search) {
        WriteBytes("d.pdt", "def_section name = 'S'; def_key name = 'v'; par = number; end_key end_section");
        WriteBytes("d.par", "[S]\nv = 1\n");
        WriteBytes("d.dmf", "");
        WriteBytes("search", search);
        kq_pdt::TOpening opening;
        opening.pdt_path = "d.pdt";
        opening.par_path = "d.par";
        opening.dmf_path = "d.dmf";
        opening.module = kq_os::LoadLibraryA(KQ_SEARCH_MODULES "/narrow.dll");
        EXPECT_NE(opening.module, nullptr);
        EXPECT_TRUE(session.Open(opening));
    }

private:
    const CTemporaryDirectory directory_;

public:
    const std::unique_ptr<CConfiguratorWindow> window = TConfiguratorAccess::Create();
    kq_pdt::CWindowSession &session = TConfiguratorAccess::Session(*window);
};

TEST(DeviceSearch, NeitherAnotherSearchNorAnEndComesMeanwhile) {
    CSearchingSession searching("add 0 1 2 x\n");
    CConfiguratorWindow *const window = searching.window.get();
    kq_pdt::CWindowSession &session = searching.session;
    std::vector<std::string> titles;
    CPerson person;
    person.begins = [&](CView &modal) {
        titles.push_back(dynamic_cast<CWindow &>(modal).Title());
        EXPECT_TRUE(modal.IsVisible());
        EXPECT_FALSE(session.HostQueryClose());
        MakeEvent(*window, ecCommand, cmSearchDevices);
        MakeEvent(*window, ecCommand, cmClose);
        MakeEvent(*window, ecCommand, kCloseLoop);
        if (titles.size() == 2) {
            dynamic_cast<CWindow &>(modal).UserClose();
        }
    };
    Send(*window, ecCommand, cmSearchDevices);
    EXPECT_EQ(titles.size(), 2U);
    EXPECT_FALSE(session.IsClosing());
    EXPECT_TRUE(session.HostQueryClose());
}

TEST(DeviceSearch, EndOfTheSessionWaitsForTheDriverOnly) {
    struct TRow {
        const char *search;
        std::size_t ended_at;  ///< the window at whose beginning the session ends
    };
    for (const TRow row : {TRow{"await\nadd 0 1 3 x\n", 1}, TRow{"add 0 1 3 x\ntext broken\n", 2}}) {
        CSearchingSession searching(row.search);
        CPerson person;
        std::size_t windows = 0;
        person.begins = [&](CView &modal) {
            if (++windows == row.ended_at) {
                searching.window->Done();
            }
            if (windows == 2) {
                Find<CToolBox>(modal).UserPress(cmApply);
            }
        };
        Send(*searching.window, ecCommand, cmSearchDevices);
        EXPECT_EQ(windows, row.ended_at);
        EXPECT_EQ(ReadBytes("d.par"), "[S]\nv = 1\n");
        EXPECT_FALSE(std::filesystem::exists("d.TMP"));
        EXPECT_TRUE(ReadBytes("log").ends_with("DoneTreeData\n"));
        EXPECT_TRUE(searching.window->ParView().Text().empty());
    }
}

}  // namespace
