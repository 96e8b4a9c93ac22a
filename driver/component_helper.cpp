#include "driver/component_helper.h"

#include <new>
#include <string>

#include "driver/entry_table.h"
#include "driver/texts.h"
#include "platform/base/bounded_text.h"
#include "platform/base/wide_text.h"
#include "platform/os/modules.h"

namespace kq_drv {
namespace {

using kq_base::TShortText;

/// Lets a module write a text through its wide entry, if it has that, or else through the other one. True and the text
/// if the call answers true.
template <typename TNarrow, typename TWide, typename TCall>
bool TakeText(TNarrow *narrow, TWide *wide, std::uint32_t high, char *text, TCall call) {
    if (wide != nullptr) {
        TShortText<char16_t> local;
        if (!call(*wide, local.kHigh, local.Data())) {
            return false;
        }
        kq_base::CopyToBuffer(local.View(), high, text);
    } else {
        TShortText<char> local;
        if (!call(*narrow, local.kHigh, local.Data())) {
            return false;
        }
        kq_base::CopyToBuffer(local.View(), high, text);
    }
    return true;
}

}  // namespace

void *CDriverComponentDLLHelper::Find(const char *name) const { return kq_os::GetFunctionAddress(module_, name); }

bool CDriverComponentDLLHelper::Init(std::uint32_t error_high, char *error, void *module) {
    state_ = TState::kRefused;
    module_ = module;
    const bool passed = VisitEntryGroups([this, error_high, error](TEntryGroup group) {
        const TEntryRow &row = group.front();
        if (row.need != TEntryNeed::kEitherWidth || Find(row.name) != nullptr || Find(row.wide_name) != nullptr) {
            return true;
        }
        try {
            kq_base::CopyToBuffer(GroupNames(group, false).append(texts::kEntryMissing), error_high, error);
        } catch (const std::bad_alloc &) {
            kq_base::CopyToBuffer(texts::kNoMemory, error_high, error);
        }
        return false;
    });
    if (!passed) {
        return false;
    }
    state_ = TState::kPassed;
    return true;
}

bool CDriverComponentDLLHelper::MayCall() const { return state_ == TState::kPassed && !kq_os::OnlyLooks(module_); }

bool CDriverComponentDLLHelper::Version(std::uint32_t &version) const {
    if (!MayCall()) {
        return false;
    }
    void *const wide = Find("VersionW");
    auto *const entry = reinterpret_cast<KQVersionEntry *>(wide != nullptr ? wide : Find("Version"));
    version = entry();
    return true;
}

bool CDriverComponentDLLHelper::GetDriverDescription(std::uint32_t high, char *text) const {
    if (!MayCall()) {
        return false;
    }
    return TakeText(reinterpret_cast<KQGetDriverInfoEntry *>(Find("GetDriverInfo")),
                    reinterpret_cast<KQGetDriverInfoEntryW *>(Find("GetDriverInfoW")), high, text,
                    [](auto &entry, std::uint32_t local_high, auto *local) {
                        entry(local_high, local);
                        return true;
                    });
}

bool CDriverComponentDLLHelper::AbleToRunInThisKQ(std::uint32_t error_high, char *error, std::uint32_t a,
                                                  std::uint32_t b, std::uint32_t c) const {
    if (!MayCall()) {
        kq_base::CopyToBuffer(texts::kNotADriver, error_high, error);
        return false;
    }
    const auto refuses = [a, b, c](auto &entry, std::uint32_t local_high, auto *local) {
        return entry(local_high, local, a, b, c, 4, 2) == 0;
    };
    return !TakeText(reinterpret_cast<KQCheckEntry *>(Find("Check")), reinterpret_cast<KQCheckEntryW *>(Find("CheckW")),
                     error_high, error, refuses);
}

bool CDriverComponentDLLHelper::IsUNICODE(std::uint8_t &wide) const {
    if (state_ != TState::kPassed) {
        return false;
    }
    wide = Find("Version") == nullptr && Find("VersionW") != nullptr ? 1 : 0;
    return true;
}

bool CDriverComponentDLLHelper::AbleToEnumerateChannels(std::uint8_t needs_init3) const {
    if (Find("EnumerateChannels") == nullptr && Find("EnumerateChannelsW") == nullptr) {
        return false;
    }
    return needs_init3 == 0 || Find("Init3") != nullptr || Find("Init3W") != nullptr;
}

}  // namespace kq_drv
