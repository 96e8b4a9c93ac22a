#include "tools/driver/driver_session.h"

#include <algorithm>
#include <array>
#include <thread>

#include "driver/channels/texts.h"
#include "platform/base/code_page.h"
#include "platform/base/file_system_name.h"
#include "tools/driver/driver_codes.h"

using kq_def::TValue;
using kq_drv::CDriver;

namespace {

using TMoment = std::chrono::steady_clock;

/// How long a driver may take for one half of a round.
constexpr std::chrono::seconds kLongestHalf{5};
constexpr std::chrono::milliseconds kBetweenQuestions{1};
/// Larger blocks are described by their first channel, and so are all after that many rows.
constexpr std::uint32_t kDescribedChannels = 64;
constexpr std::size_t kMostRows = 100000;

/// Room for one text of a driver.
struct TDriverText {
    std::array<char, 256> text{};

    static constexpr std::uint32_t kHigh = 255;
    static constexpr std::uint32_t kShortHigh = 63;
    char *Room() { return text.data(); }
    std::string String() const { return text.data(); }
};

/// A moment that nobody looks into. Drivers that write one find room.
struct TStampRoom {
    std::array<std::uint64_t, 4> bytes{};

    KQUTCStamp *Stamp() { return reinterpret_cast<KQUTCStamp *>(bytes.data()); }
};

}  // namespace

bool THalfRound::Good() const {
    return whole.ok && std::all_of(values.begin(), values.end(), [](const TStepResult &value) { return value.ok; });
}

CDriverSession::~CDriverSession() {
    if (running_) {
        driver_.Stop();
    }
    if (made_) {
        driver_.Done();
    }
}

bool CDriverSession::Load(const std::string &module, std::string &reason) {
    if (!module_.Load(module, reason)) {
        return false;
    }
    driver_.Init(module_.Handle());
    return true;
}

bool CDriverSession::MakeDriver(const std::string &name, std::uint32_t instance, std::string &reason) {
    TDriverText error;
    made_ = driver_.Initialize(TDriverText::kHigh, error.Room(), instance, 0, name.c_str());
    reason = made_ ? "" : kq_base::ToUtf8(error.String());
    return made_;
}

std::optional<std::uint32_t> CDriverSession::Version() {
    std::uint32_t version = 0;
    return driver_.Version(version) ? std::optional(version) : std::nullopt;
}

std::optional<std::string> CDriverSession::Description() {
    TDriverText text;
    return driver_.GetDriverInfo(TDriverText::kHigh, text.Room()) ? std::optional(text.String()) : std::nullopt;
}

TParametersAnswer CDriverSession::ReadParameters(const std::string &path) {
    TDriverText error;
    TDriverText detail;
    TParametersAnswer answer;
    answer.ok = driver_.ReadParameters(0, kq_base::FromFileSystem(path).c_str(), TDriverText::kHigh, error.Room(),
                                       answer.a, answer.b, TDriverText::kHigh, detail.Room());
    answer.message = answer.ok ? "" : error.String();
    answer.detail = detail.String();
    return answer;
}

std::optional<std::vector<TDriverChannels>> CDriverSession::Channels(std::vector<std::string> &mistakes) {
    if (!driver_.AbleToEnumerateChannels(0)) {
        return std::nullopt;
    }
    TDriverText error;
    kq_drv::CChannelMap map;
    if (!map.LoadFromDriver(TDriverText::kHigh, error.Room(), &driver_)) {
        mistakes.push_back(kq_base::ToUtf8(error.String()));
    }
    map.Done();
    bool bounds_hold = true;
    std::vector<TDriverChannels> channels;
    unsigned long cookie = 0;
    TDriverChannels block;
    for (std::size_t blocks = 0;
         blocks < kq_drv::CChannelMap::kMostBlocks &&
         driver_.EnumerateChannels(cookie, block.type, block.direction, block.first, block.count, block.flag);
         ++blocks) {
        if (bounds_hold && (block.count == 0 || block.first + (block.count - 1) < block.first)) {
            bounds_hold = false;
            const std::string first = " (" + std::to_string(block.first) + ")";
            mistakes.push_back(kq_base::ToUtf8(kq_drv::texts::kBoundsReversed) + first);
        }
        AddDescribed(block, channels);
    }
    return channels;
}

void CDriverSession::AddDescribed(const TDriverChannels &block, std::vector<TDriverChannels> &channels) {
    const bool each = block.count <= kDescribedChannels && channels.size() < kMostRows;
    const std::uint32_t step = each ? 1 : block.count;
    for (std::uint32_t offset = 0; offset < block.count; offset += step) {
        TDriverText text;
        TDriverText detail;
        TDriverChannels described = block;
        described.first = block.first + offset;
        described.count = step;
        if (driver_.GetChannelDescription(described.first, TDriverText::kHigh, text.Room(), TDriverText::kShortHigh,
                                          detail.Room())) {
            described.description = text.String();
            described.detail = detail.String();
        }
        if (offset != 0 && channels.back().description == described.description &&
            channels.back().detail == described.detail) {
            ++channels.back().count;
        } else {
            channels.push_back(described);
        }
    }
}

bool CDriverSession::OfferBuffers(TDrivePlan &plan, std::string &reason) {
    constexpr std::uint8_t kToRead = 1;
    for (TDrivePoint &point : plan.reads) {
        if (!point.value.IsBuffer()) {
            continue;
        }
        std::uint32_t code = 0;
        if (!driver_.BufferInfo(code, point.channel, kToRead, kBufferSize) && code != kq_drv::kNoBufferInfo) {
            reason = "channel " + std::to_string(point.channel) + ": " + Failure(code).text;
            return false;
        }
        driver_.SetBufferAddr(code, point.channel, point.value.Buffer());
    }
    return true;
}

void CDriverSession::Run() {
    running_ = true;
    driver_.Run();
}

TStepResult CDriverSession::Failure(std::uint32_t code) {
    TDriverText text;
    std::string meaning = ProxyCodeText(code);
    if (meaning.empty() && driver_.QueryErrorCode(code, TDriverText::kHigh, text.Room())) {
        meaning = kq_base::ToUtf8(text.String());
    }
    return {.ok = false, .code = code, .text = meaning.empty() ? "the driver has no text for this code" : meaning};
}

TStepResult CDriverSession::AwaitEnd(TFinalized finalized) {
    const auto limit = TMoment::now() + kLongestHalf;
    std::uint32_t code = 0;
    while (!(driver_.*finalized)(0, code)) {
        if (code != 0) {
            return Failure(code);
        }
        if (TMoment::now() > limit) {
            return {.ok = false, .text = "the driver didn't come to an end within 5 s"};
        }
        std::this_thread::sleep_for(kBetweenQuestions);
    }
    return {};
}

THalfRound CDriverSession::Write(std::deque<TDrivePoint> &points) {
    THalfRound half;
    driver_.OutputRequestStart();
    for (TDrivePoint &point : points) {
        TStampRoom stamp;
        std::uint32_t code = 0;
        const bool handed = driver_.OutputRequest(code, point.channel, point.value.Value(), 0, stamp.Stamp());
        half.values.push_back(handed ? TStepResult{} : Failure(code));
    }
    driver_.OutputRequestCompleted();
    half.whole = AwaitEnd(&CDriver::OutputFinalized);
    return half;
}

THalfRound CDriverSession::Read(std::deque<TDrivePoint> &points) {
    THalfRound half;
    driver_.InputRequestStart();
    for (const TDrivePoint &point : points) {
        driver_.InputRequest(point.channel);
    }
    driver_.InputRequestCompleted();
    half.whole = AwaitEnd(&CDriver::InputFinalized);
    for (TDrivePoint &point : points) {
        TStampRoom stamp;
        std::uint32_t code = 0;
        std::uint32_t status = 0;
        TValue value = point.value.Value();
        if (driver_.GetInput(code, point.channel, &value, status, stamp.Stamp())) {
            point.value.Take(value);
            half.values.push_back({.status = status});
        } else {
            half.values.push_back(Failure(code));
        }
    }
    return half;
}
