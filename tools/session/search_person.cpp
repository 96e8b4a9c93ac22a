#include "tools/session/search_person.h"

#include <utility>

#include "configurator/kq_pdt.h"
#include "platform/view/labels.h"
#include "platform/view/tree_viewer.h"

namespace {

/// The first view of a type in a window. The windows are built by the library: their views are few.
template <class View>
View *FindView(CView &window) {
    std::vector<CView *> views = {&window};
    for (std::size_t index = 0; index < views.size(); ++index) {
        if (auto *view = dynamic_cast<View *>(views[index])) {
            return view;
        }
        views.insert(views.end(), views[index]->Children().begin(), views[index]->Children().end());
    }
    return nullptr;
}

TJson ItemJson(const TTreeItem &item) {
    return {{"key", NumberOrNull(item.key)},
            {"text", TextJson(item.text)},
            {"mark", item.Has(kTreeItemHasMark)},
            {"checked", item.Has(kTreeItemTagged)},
            {"items", TJson::array()}};
}

/// Items below this level aren't given: nothing reads JSON that is nested without limit.
constexpr std::size_t kDeepestLevel = 200;

TJson TreeJson(const CTreeViewerPane &tree) {
    struct TLevel {
        const std::vector<std::unique_ptr<TTreeItem>> *items;
        std::size_t next;
        TJson json;
    };
    std::vector<TLevel> levels;
    levels.push_back({&tree.Items(), 0, TJson::array()});
    for (;;) {
        TLevel &level = levels.back();
        if (level.next < level.items->size()) {
            const TTreeItem &item = *(*level.items)[level.next++];
            level.json.push_back(ItemJson(item));
            if (levels.size() < kDeepestLevel) {
                levels.push_back({&item.items, 0, TJson::array()});
            } else if (!item.items.empty()) {
                level.json.back()["deeper"] = true;
            }
        } else {
            TJson done = std::move(level.json);
            levels.pop_back();
            if (levels.empty()) {
                return done;
            }
            levels.back().json.back()["items"] = std::move(done);
        }
    }
}

TJson LinesJson(const CView &window) {
    TJson lines = TJson::array();
    for (const CView *child : window.Children()) {
        if (const auto *line = dynamic_cast<const CStaticText *>(child)) {
            lines.push_back(TextJson(line->Text()));
        }
    }
    return lines;
}

}  // namespace

void CSearchPerson::ConfirmItems(std::vector<std::uint32_t> keys) {
    keys_ = std::move(keys);
    confirm_ = true;
}

void CSearchPerson::WindowBegan(CView &window) {
    answered_ = false;
    auto *const button = FindView<CButton>(window);
    // The press is in the queue before the end of the search can take effect, however fast the driver is.
    if (cancel_ && button != nullptr) {
        button->UserPress();
    }
}

void CSearchPerson::Act(CView &window) {
    auto *const frame = dynamic_cast<CWindow *>(&window);
    if (frame != nullptr && !answered_ && FindView<CTreeViewerPane>(window) != nullptr) {
        answered_ = true;
        AnswerResult(*frame);
        return;
    }
    WaitForEvent();
}

void CSearchPerson::AnswerResult(CWindow &window) const {
    CToolBox *const tool_box = window.DockedToolBox();
    if (!confirm_ || tool_box == nullptr) {
        window.UserClose();
        return;
    }
    auto &tree = *FindView<CTreeViewerPane>(window);
    for (const std::uint32_t key : keys_) {
        if (TTreeItem *const item = tree.FindItem(key)) {
            tree.UserTag(*item, true);
        }
    }
    tool_box->UserPress(cmApply);
}

void CSearchPerson::WindowEnded(CView &window, std::uint32_t code) {
    const auto *const frame = dynamic_cast<CWindow *>(&window);
    TJson event = {{"window", frame != nullptr ? TextJson(frame->Title()) : TJson(nullptr)}};
    if (const auto *const tree = FindView<CTreeViewerPane>(window)) {
        event["tree"] = TreeJson(*tree);
    } else {
        event["lines"] = LinesJson(window);
    }
    event["ended"] = code;
    recorder_.Add(std::move(event));
}
