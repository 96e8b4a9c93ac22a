#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"
#include "platform/view/tree_viewer.h"

/// What drivers report of their search for devices. Their callbacks carry no context, and come on any thread and at any
/// time, even when the search is long over. So they touch nothing but a queue that never ends: the user interface
/// thread takes the reports from there, in their order. Without a search under way they are dropped.
namespace kq_pdt {

struct TFoundItem {
    std::uint32_t parent = 0;
    std::uint32_t key = 0;
    std::string name;
    std::uint32_t flags = 0;
};

/// The lines that the progress window is to show.
using TSearchLines = std::array<std::string, 3>;

using TSearchReport = std::variant<TFoundItem, TSearchLines>;

/// The code of the event, of class ecNotice, that says that reports wait.
inline constexpr std::uint32_t kSearchReported = 0x4B3;

/// A search begins: reports wait for a view, which gets kSearchReported when the first of them comes.
void BeginSearchReports(CEventHandler &receiver);
/// It is over: what waits and what still comes is dropped, and the receiver may end.
void EndSearchReports();
/// What waits, in the order in which it came.
std::vector<TSearchReport> TakeSearchReports();

/// From now on drivers are answered by a tree which of its items are checked; null: none is. The tree mustn't change
/// meanwhile.
void AnswerCheckedFrom(const CTreeViewerPane *tree);

// The callbacks that drivers get.

KQAddItemEntry AddSearchItem;
KQAddItemEntryW AddSearchItemW;
KQProgressEntry ShowSearchProgress;
KQProgressEntryW ShowSearchProgressW;
KQIsCheckedEntry IsSearchItemChecked;

}  // namespace kq_pdt
