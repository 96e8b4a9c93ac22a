// The operations of the proxy that hand a call on to the driver.

#include "driver/driver_proxy.h"
#include "driver/driver_state.h"
#include "platform/base/wide_text.h"

namespace kq_drv {
namespace {

using kq_base::CLocalText;
using kq_base::TShortText;

template <typename TCharacter>
bool QueryErrorCode(const TDriverState &state, const TTextEntries<TCharacter> &entries, std::uint32_t code,
                    std::uint32_t high, char *text) {
    TShortText<TCharacter> local;
    if (state.Forward(entries.query_error_code, code, local.kHigh, local.Data()) == 0) {
        return false;
    }
    kq_base::CopyToBuffer(local.View(), high, text);
    return true;
}

template <typename TCharacter>
bool GetChannelDescription(const TDriverState &state, const TTextEntries<TCharacter> &entries, std::uint32_t channel,
                           std::uint32_t high, char *text, std::uint32_t second_high, char *second) {
    TShortText<TCharacter> local;
    CLocalText<TCharacter, 64> local_second;
    if (state.Forward(entries.get_channel_description, channel, local.kHigh, local.Data(), local_second.kHigh,
                      local_second.Data()) == 0) {
        return false;
    }
    kq_base::CopyToBuffer(local.View(), high, text);
    kq_base::CopyToBuffer(local_second.View(), second_high, second);
    return true;
}

/// The caller's callback; without a context there is none to ask.
std::uint32_t CallBack(void *context, std::uint32_t (CDriver::*answer)(std::uint32_t, void *), std::uint32_t number,
                       void *pointer) {
    return context != nullptr ? (static_cast<CDriver *>(context)->*answer)(number, pointer) : 0xFFFFFFFF;
}

}  // namespace

bool CDriver::QueryErrorCode(std::uint32_t code, std::uint32_t high, char *text) {
    const TDriverEntries &entries = state_->entries;
    return entries.wide.query_error_code != nullptr ? kq_drv::QueryErrorCode(*state_, entries.wide, code, high, text)
                                                    : kq_drv::QueryErrorCode(*state_, entries.narrow, code, high, text);
}

bool CDriver::AbleToEnumerateChannels(std::uint8_t needs_init3) {
    const TDriverEntries &entries = state_->entries;
    return entries.enumerate_channels != nullptr && (needs_init3 == 0 || entries.HasInit3());
}

bool CDriver::EnumerateChannels(unsigned long &cookie, std::uint32_t &type, kq_def::TDirection &direction,
                                std::uint32_t &first, std::uint32_t &count, std::uint8_t &flag) {
    std::uint32_t given = 0;
    if (state_->Forward(state_->entries.enumerate_channels, &cookie, &type, &given, &first, &count, &flag) == 0) {
        return false;
    }
    direction = static_cast<kq_def::TDirection>(given);
    return true;
}

bool CDriver::GetChannelDescription(std::uint32_t channel, std::uint32_t high, char *text, std::uint32_t second_high,
                                    char *second) {
    const TDriverEntries &entries = state_->entries;
    return entries.wide.get_channel_description != nullptr
               ? kq_drv::GetChannelDescription(*state_, entries.wide, channel, high, text, second_high, second)
               : kq_drv::GetChannelDescription(*state_, entries.narrow, channel, high, text, second_high, second);
}

void CDriver::Run() { state_->Forward(state_->entries.run); }
void CDriver::Stop() { state_->Forward(state_->entries.stop); }

void CDriver::InputRequestStart() { state_->Forward(state_->entries.input_request_start); }
void CDriver::InputRequest(std::uint32_t channel) { state_->Forward(state_->entries.input_request, channel); }
void CDriver::InputRequestCompleted() { state_->Forward(state_->entries.input_request_completed); }

bool CDriver::InputFinalized(std::uint32_t number, std::uint32_t &code) {
    if (!state_->Reaches(state_->entries.input_finalized)) {
        code = kNoInputFinalized;
        return false;
    }
    return state_->Forward(state_->entries.input_finalized, number, &code) != 0;
}

bool CDriver::InputOOBDataQuery(unsigned long &a, std::uint32_t &b) {
    return state_->Forward(state_->entries.input_oob_data_query, &a, &b) != 0;
}

void CDriver::OutputRequestStart() { state_->Forward(state_->entries.output_request_start); }
void CDriver::OutputRequestCompleted() { state_->Forward(state_->entries.output_request_completed); }

bool CDriver::OutputFinalized(std::uint32_t number, std::uint32_t &code) {
    if (!state_->Reaches(state_->entries.output_finalized)) {
        code = kNoOutputFinalized;
        return false;
    }
    return state_->Forward(state_->entries.output_finalized, number, &code) != 0;
}

bool CDriver::BufferInfo(std::uint32_t &code, std::uint32_t a, std::uint8_t b, std::uint32_t c) {
    if (!state_->Reaches(state_->entries.buffer_info)) {
        code = kNoBufferInfo;
        return false;
    }
    code = kBufferInfoRefused;
    return state_->Forward(state_->entries.buffer_info, a, b, c) != 0;
}

bool CDriver::SetBufferAddr(std::uint32_t &code, std::uint32_t a, void *memory) {
    if (!state_->Reaches(state_->entries.set_buffer_addr)) {
        code = kNoSetBufferAddr;
        return false;
    }
    state_->Forward(state_->entries.set_buffer_addr, a, memory);
    return true;
}

void CDriver::DriverProc(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t e) {
    state_->Forward(state_->entries.driver_proc, a, b, c, d, e);
}

std::uint32_t CDriver::DriverCallBackA(std::uint32_t /*number*/, void * /*pointer*/) { return 0xFFFFFFFF; }
std::uint32_t CDriver::DriverCallBackW(std::uint32_t /*number*/, void * /*pointer*/) { return 0xFFFFFFFF; }

}  // namespace kq_drv

std::uint32_t KQDriverCallback(void *context, std::uint32_t number, void *pointer) {
    return kq_drv::CallBack(context, &kq_drv::CDriver::DriverCallBackA, number, pointer);
}

std::uint32_t KQDriverCallbackW(void *context, std::uint32_t number, void *pointer) {
    return kq_drv::CallBack(context, &kq_drv::CDriver::DriverCallBackW, number, pointer);
}
