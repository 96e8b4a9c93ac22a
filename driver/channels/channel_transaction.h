#pragma once

#include "driver/channels/channel_range_store.h"

namespace kq_pdt {

class CChannelRangeTable;

/// All or nothing over a table of channel ranges: whatever happens to the table while a transaction is open either
/// stays (Commit) or is undone (RollBack, and the destructor of one that is still open). It is a journal, not a copy:
/// it costs what is changed. Without a transaction nothing is journaled.
///
/// After a rollback all that can be seen is as it was when the transaction began: the rows and their order, also among
/// equal first numbers, names, flags, the entries kept aside, DmfStopLine and the text that WriteDmfText writes; Clear
/// and LoadDmfText are undone as well. The owner hears ChannelsChanged if something was undone; messages that it got
/// meanwhile stay.
///
/// Transactions nest: an inner one is a mark in the same journal. What it commits is still undone if an outer one is
/// rolled back. They end in the reverse order of their beginning, and before the table does.
class CChannelTransaction {
public:
    explicit CChannelTransaction(CChannelRangeTable &table);
    ~CChannelTransaction() { RollBack(); }
    CChannelTransaction(const CChannelTransaction &) = delete;
    CChannelTransaction &operator=(const CChannelTransaction &) = delete;

    /// Keeps what was changed. Does nothing if the transaction has ended.
    void Commit();
    /// Undoes what was changed, the newest first. Does nothing if the transaction has ended.
    void RollBack();
    bool IsOpen() const { return table_ != nullptr; }

private:
    CChannelRangeTable *table_;  ///< null once it has ended
    CChannelRangeStore::TMark begin_;
};

}  // namespace kq_pdt
