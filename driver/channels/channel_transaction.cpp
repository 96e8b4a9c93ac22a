#include "driver/channels/channel_transaction.h"

#include <utility>

#include "driver/channels/channel_range_table.h"

namespace kq_pdt {

CChannelTransaction::CChannelTransaction(CChannelRangeTable &table)
    : table_(&table), begin_(table.store_.OpenJournal()) {}

void CChannelTransaction::Commit() {
    if (CChannelRangeTable *table = std::exchange(table_, nullptr)) {
        table->store_.CloseJournal();
    }
}

void CChannelTransaction::RollBack() {
    if (CChannelRangeTable *table = std::exchange(table_, nullptr)) {
        const bool changed = table->store_.RollBackTo(begin_);
        table->store_.CloseJournal();
        if (changed) {
            table->Changed();
        }
    }
}

}  // namespace kq_pdt
