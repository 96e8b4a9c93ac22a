// The proxy from its module to a driver that has read its parameters, and the driver's end.

#include <algorithm>
#include <initializer_list>
#include <new>
#include <string>
#include <string_view>

#include "driver/driver_proxy.h"
#include "driver/driver_state.h"
#include "driver/texts.h"
#include "platform/base/wide_text.h"
#include "platform/os/modules.h"

namespace kq_drv {
namespace {

using kq_base::CLocalText;

constexpr std::size_t kPathSize = 260;

/// Writes texts one after the other to a caller's buffer, cut at its bound.
void CopyParts(std::initializer_list<std::string_view> parts, std::uint32_t high, char *buffer) {
    for (const std::string_view part : parts) {
        kq_base::CopyToBuffer(part, high, buffer);
        const auto written = static_cast<std::uint32_t>(std::min<std::size_t>(part.size(), high));
        high -= written;
        buffer += buffer != nullptr ? written : 0;
    }
}

/// Settles which form of an entry serves a value.
void SettleForms(TDriverState &state) {
    const CDriverEntries &entries = state.entries;
    state.input = entries.Get<TEntry::kGetInput3>() != nullptr   ? TForm::kThird
                  : entries.Get<TEntry::kGetInput2>() != nullptr ? TForm::kSecond
                                                                 : TForm::kFirst;
    static_assert(std::is_same_v<KQOutputRequest2Entry, KQOutputRequest3Entry>);
    state.stamped_output = entries.Get<TEntry::kOutputRequest3>() != nullptr ? entries.Get<TEntry::kOutputRequest3>()
                                                                             : entries.Get<TEntry::kOutputRequest2>();
    state.output = entries.Get<TEntry::kOutputRequest3>() != nullptr   ? TForm::kThird
                   : entries.Get<TEntry::kOutputRequest2>() != nullptr ? TForm::kSecond
                                                                       : TForm::kFirst;
    state.query = entries.Get<TEntry::kQueryProc3>() != nullptr  ? TForm::kThird
                  : entries.Get<TEntry::kQueryProc>() != nullptr ? TForm::kFirst
                                                                 : TForm::kNone;
}

/// Finds the entries and makes the room for strings. The reason is empty if a driver can be made.
void Prepare(TDriverState &state, std::string &reason) {
    std::uint8_t wide = 0;
    if (!state.helper.IsUNICODE(wide) || kq_os::OnlyLooks(state.module)) {
        reason = texts::kNotADriver;
    } else if (!state.entries.Find(state.module, wide != 0, reason)) {
        reason += texts::kEntryMissing;
    } else if (wide != 0) {
        state.wide_room = std::make_shared<CTextRoom<char16_t>>();
    } else {
        state.room = std::make_shared<CTextRoom<char>>();
    }
}

/// Makes the driver; false if the module makes none.
template <typename TCharacter>
bool MakeDriver(TDriverState &state, CDriver *context, KQDriverCallbackEntry *callback) {
    state.driver = state.entries.Get<TEntry::kMakeDriver>()();
    if (state.driver == nullptr) {
        return false;
    }
    SettleForms(state);
    // All must be ready here: from now on the driver may call its host, and the host the driver.
    CLocalText<TCharacter, 64> name(state.name.View());
    state.Forward<TEntry::kInit3, TCharacter>(state.instance, name.kHigh, name.Data(), context, callback);
    return true;
}

/// Where the caller of ReadParameters wants its results.
struct TParameterResults {
    std::uint32_t error_high;
    char *error;
    std::uint32_t &a;
    std::uint32_t &b;
    std::uint32_t text_high;
    char *text;
};

template <typename TCharacter>
bool ReadParameters(const TDriverState &state, std::string_view path, CDriver *context,
                    const TParameterResults &results) {
    CLocalText<TCharacter, kPathSize> local_path(path);
    if (!state.Reaches<TEntry::kInit3>()) {
        // Generation 1 makes no difference between being set up and reading its parameters. It gets the callback for
        // 8-bit texts in either width.
        CLocalText<TCharacter, 256> name_then_error(state.name.View());
        const bool done = state.Forward<TEntry::kInit, TCharacter>(
                              local_path.kHigh, local_path.Data(), name_then_error.kHigh, name_then_error.Data(),
                              std::uint32_t{0}, KQTruth{state.instance == 0}, context, KQDriverCallback) != 0;
        if (!done) {
            kq_base::CopyToBuffer(name_then_error.View(), results.error_high, results.error);
        }
        return done;
    }
    if (!state.Reaches<TEntry::kReadParameters>()) {
        return true;
    }
    CLocalText<TCharacter, 256> error;
    CLocalText<TCharacter, 256> text;
    if (state.Forward<TEntry::kReadParameters, TCharacter>(local_path.kHigh, local_path.Data(), error.kHigh,
                                                           error.Data(), &results.a, &results.b, text.kHigh,
                                                           text.Data()) != 0) {
        return true;
    }
    kq_base::CopyToBuffer(error.View(), results.error_high, results.error);
    kq_base::CopyToBuffer(text.View(), results.text_high, results.text);
    return false;
}

}  // namespace

CDriver::CDriver() : state_(std::make_unique<TDriverState>()) {}
CDriver::CDriver(const CDriver &other) : state_(std::make_unique<TDriverState>(*other.state_)) {}
CDriver &CDriver::operator=(const CDriver &other) {
    *state_ = *other.state_;
    return *this;
}
CDriver::~CDriver() = default;

void CDriver::Init(void *module) {
    state_->module = module;
    char unused[4];
    state_->helper.Init(sizeof(unused) - 1, unused, module);
}

bool CDriver::Version(std::uint32_t &version) { return state_->helper.Version(version); }

bool CDriver::GetDriverInfo(std::uint32_t high, char *text) { return state_->helper.GetDriverDescription(high, text); }

bool CDriver::Initialize(std::uint32_t error_high, char *error, std::uint32_t instance, std::uint32_t name_high,
                         const char *name) {
    TDriverState &state = *state_;
    state.Forget();
    state.entries = {};
    state.instance = instance;
    std::string reason;
    try {
        state.name = kq_base::ViewOfPair(name_high, name);
        Prepare(state, reason);
    } catch (const std::bad_alloc &) {
        CopyParts({texts::kNoMemory}, error_high, error);
        return false;
    }
    if (!reason.empty()) {
        CopyParts({reason, state.name.View()}, error_high, error);
        return false;
    }
    const bool made = state.IsWide() ? MakeDriver<char16_t>(state, this, KQDriverCallbackW)
                                     : MakeDriver<char>(state, this, KQDriverCallback);
    if (!made) {
        CopyParts({state.name.View(), texts::kNoDriverMade}, error_high, error);
    }
    return made;
}

bool CDriver::ReadParameters(std::uint32_t path_high, const char *path, std::uint32_t error_high, char *error,
                             std::uint32_t &a, std::uint32_t &b, std::uint32_t text_high, char *text) {
    // A copy, as the caller may have the path where a text goes.
    CLocalText<char, kPathSize> path_text(kq_base::ViewOfPair(path_high, path));
    a = 0;
    b = 0;
    kq_base::CopyToBuffer(std::string_view(), text_high, text);
    const TDriverState &state = *state_;
    if (state.driver == nullptr) {
        CopyParts({texts::kNotADriver, state.name.View()}, error_high, error);
        return false;
    }
    const TParameterResults results = {error_high, error, a, b, text_high, text};
    return state.IsWide() ? kq_drv::ReadParameters<char16_t>(state, path_text.View(), this, results)
                          : kq_drv::ReadParameters<char>(state, path_text.View(), this, results);
}

void CDriver::Done() {
    state_->Forward<TEntry::kDone>();
    state_->Forward<TEntry::kDisposeDriver>();
    state_->Forget();
}

void Init_() {}

}  // namespace kq_drv
