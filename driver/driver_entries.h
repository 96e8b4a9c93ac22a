#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"

namespace kq_drv {

/// The entries of a module in whose form the width of its texts shows.
template <typename TCharacter>
struct TTextEntries {
    template <typename TNarrow, typename TWide>
    using TForm = std::conditional_t<std::is_same_v<TCharacter, char>, TNarrow, TWide>;

    TForm<KQInitEntry, KQInitEntryW> *init = nullptr;
    TForm<KQInit3Entry, KQInit3EntryW> *init3 = nullptr;
    TForm<KQReadParametersEntry, KQReadParametersEntryW> *read_parameters = nullptr;
    TForm<KQQueryErrorCodeEntry, KQQueryErrorCodeEntryW> *query_error_code = nullptr;
    TForm<KQGetChannelDescriptionEntry, KQGetChannelDescriptionEntryW> *get_channel_description = nullptr;
};

/// What a module was found to export: null for an absent entry. All but the text entries have the same form in both
/// widths, so one place serves for both; of the text entries only those of the module's width are ever there.
struct TDriverEntries {
    KQGetInputEntry *get_input = nullptr;
    KQGetInput2Entry *get_input2 = nullptr;
    KQGetInput3Entry *get_input3 = nullptr;
    KQOutputRequestEntry *output_request = nullptr;
    KQOutputRequest2Entry *output_request2 = nullptr;
    KQOutputRequest3Entry *output_request3 = nullptr;
    KQMakeDriverEntry *make_driver = nullptr;
    KQDisposeDriverEntry *dispose_driver = nullptr;
    KQEnumerateChannelsEntry *enumerate_channels = nullptr;
    KQRunEntry *run = nullptr;
    KQStopEntry *stop = nullptr;
    KQDoneEntry *done = nullptr;
    KQBufferInfoEntry *buffer_info = nullptr;
    KQSetBufferAddrEntry *set_buffer_addr = nullptr;
    KQInputRequestStartEntry *input_request_start = nullptr;
    KQInputRequestEntry *input_request = nullptr;
    KQInputRequestCompletedEntry *input_request_completed = nullptr;
    KQInputFinalizedEntry *input_finalized = nullptr;
    KQInputOOBDataQueryEntry *input_oob_data_query = nullptr;
    KQOutputRequestStartEntry *output_request_start = nullptr;
    KQOutputRequestCompletedEntry *output_request_completed = nullptr;
    KQOutputFinalizedEntry *output_finalized = nullptr;
    KQDriverProcEntry *driver_proc = nullptr;
    KQQueryProcEntry *query_proc = nullptr;
    KQQueryProc3Entry *query_proc3 = nullptr;
    TTextEntries<char> narrow;
    TTextEntries<char16_t> wide;

    bool HasInit3() const { return narrow.init3 != nullptr || wide.init3 != nullptr; }
};

/// Looks the entries of a module up. False if one that must be there is missing: its name, or the names of a group of
/// which none is there. What was found ahead of it stays.
bool FindEntries(void *module, bool wide, TDriverEntries &entries, std::string &missing);

}  // namespace kq_drv
