// The operations of the proxy that hand a call on to the driver.

#include "driver/driver_proxy.h"
#include "driver/driver_state.h"
#include "platform/base/wide_text.h"

namespace kq_drv {
namespace {

using kq_base::CLocalText;
using kq_base::TShortText;

template <typename TCharacter>
bool QueryErrorCode(const TDriverState &state, std::uint32_t code, std::uint32_t high, char *text) {
    TShortText<TCharacter> local;
    if (state.Forward<TEntry::kQueryErrorCode, TCharacter>(code, local.kHigh, local.Data()) == 0) {
        return false;
    }
    kq_base::CopyToBuffer(local.View(), high, text);
    return true;
}

template <typename TCharacter>
bool GetChannelDescription(const TDriverState &state, std::uint32_t channel, std::uint32_t high, char *text,
                           std::uint32_t second_high, char *second) {
    TShortText<TCharacter> local;
    CLocalText<TCharacter, 64> local_second;
    if (state.Forward<TEntry::kGetChannelDescription, TCharacter>(channel, local.kHigh, local.Data(),
                                                                  local_second.kHigh, local_second.Data()) == 0) {
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
    return state_->IsWide() ? kq_drv::QueryErrorCode<char16_t>(*state_, code, high, text)
                            : kq_drv::QueryErrorCode<char>(*state_, code, high, text);
}

bool CDriver::AbleToEnumerateChannels(std::uint8_t needs_init3) {
    const CDriverEntries &entries = state_->entries;
    return entries.Get<TEntry::kEnumerateChannels>() != nullptr &&
           (needs_init3 == 0 || entries.Get<TEntry::kInit3>() != nullptr);
}

bool CDriver::EnumerateChannels(unsigned long &cookie, std::uint32_t &type, kq_def::TDirection &direction,
                                std::uint32_t &first, std::uint32_t &count, std::uint8_t &flag) {
    std::uint32_t given = 0;
    if (state_->Forward<TEntry::kEnumerateChannels>(&cookie, &type, &given, &first, &count, &flag) == 0) {
        return false;
    }
    direction = static_cast<kq_def::TDirection>(given);
    return true;
}

bool CDriver::GetChannelDescription(std::uint32_t channel, std::uint32_t high, char *text, std::uint32_t second_high,
                                    char *second) {
    return state_->IsWide() ? kq_drv::GetChannelDescription<char16_t>(*state_, channel, high, text, second_high, second)
                            : kq_drv::GetChannelDescription<char>(*state_, channel, high, text, second_high, second);
}

void CDriver::Run() { state_->Forward<TEntry::kRun>(); }
void CDriver::Stop() { state_->Forward<TEntry::kStop>(); }

void CDriver::InputRequestStart() { state_->Forward<TEntry::kInputRequestStart>(); }
void CDriver::InputRequest(std::uint32_t channel) { state_->Forward<TEntry::kInputRequest>(channel); }
void CDriver::InputRequestCompleted() { state_->Forward<TEntry::kInputRequestCompleted>(); }

bool CDriver::InputFinalized(std::uint32_t number, std::uint32_t &code) {
    if (!state_->Reaches<TEntry::kInputFinalized>()) {
        code = kNoInputFinalized;
        return false;
    }
    return state_->Forward<TEntry::kInputFinalized>(number, &code) != 0;
}

bool CDriver::InputOOBDataQuery(unsigned long &a, std::uint32_t &b) {
    return state_->Forward<TEntry::kInputOOBDataQuery>(&a, &b) != 0;
}

void CDriver::OutputRequestStart() { state_->Forward<TEntry::kOutputRequestStart>(); }
void CDriver::OutputRequestCompleted() { state_->Forward<TEntry::kOutputRequestCompleted>(); }

bool CDriver::OutputFinalized(std::uint32_t number, std::uint32_t &code) {
    if (!state_->Reaches<TEntry::kOutputFinalized>()) {
        code = kNoOutputFinalized;
        return false;
    }
    return state_->Forward<TEntry::kOutputFinalized>(number, &code) != 0;
}

bool CDriver::BufferInfo(std::uint32_t &code, std::uint32_t a, std::uint8_t b, std::uint32_t c) {
    if (!state_->Reaches<TEntry::kBufferInfo>()) {
        code = kNoBufferInfo;
        return false;
    }
    code = kBufferInfoRefused;
    return state_->Forward<TEntry::kBufferInfo>(a, b, c) != 0;
}

bool CDriver::SetBufferAddr(std::uint32_t &code, std::uint32_t a, void *memory) {
    if (!state_->Reaches<TEntry::kSetBufferAddr>()) {
        code = kNoSetBufferAddr;
        return false;
    }
    state_->Forward<TEntry::kSetBufferAddr>(a, memory);
    return true;
}

void CDriver::DriverProc(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t e) {
    state_->Forward<TEntry::kDriverProc>(a, b, c, d, e);
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
