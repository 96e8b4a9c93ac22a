#include "driver/channels/channel_map.h"

#include <new>
#include <string>

#include "driver/channels/channel_block_set.h"
#include "driver/channels/dmf_map_reader.h"
#include "driver/channels/texts.h"
#include "driver/driver_proxy.h"
#include "platform/base/bounded_text.h"
#include "platform/base/files.h"
#include "platform/base/number_text.h"

namespace kq_drv {
namespace {

bool Refuse(std::string_view text, std::uint32_t error_high, char *error) {
    kq_base::CopyToBuffer(text, error_high, error);
    return false;
}

/// Does work that may need memory; without it the work is refused.
template <typename TWork>
bool WithMemory(std::uint32_t error_high, char *error, TWork work) {
    try {
        return work();
    } catch (const std::bad_alloc &) {
        return Refuse(texts::kNoMapMemory, error_high, error);
    }
}

}  // namespace

CChannelMap::CChannelMap() = default;
CChannelMap::~CChannelMap() = default;
CChannelMap::CChannelMap(const CChannelMap &) = default;
CChannelMap &CChannelMap::operator=(const CChannelMap &) = default;

bool CChannelMap::LoadFromDString(std::uint32_t error_high, char *error, const TDStringA *text) {
    return WithMemory(error_high, error, [&] { return Load(error_high, error, text->View()); });
}

bool CChannelMap::LoadFromFile(std::uint32_t error_high, char *error, std::uint32_t path_high, const char *path) {
    return WithMemory(error_high, error, [&] {
        std::string text;
        std::string reason;
        if (!kq_base::CDisk::Current().Read(kq_base::ViewOfPair(path_high, path), text, reason)) {
            return Refuse(texts::kNoMapFile, error_high, error);
        }
        return Load(error_high, error, text);
    });
}

bool CChannelMap::LoadFromDriver(std::uint32_t error_high, char *error, CDriver *driver) {
    if (!driver->AbleToEnumerateChannels(0)) {
        return false;
    }
    return WithMemory(error_high, error, [&] { return LoadBlocks(error_high, error, *driver); });
}

bool CChannelMap::LoadBlocks(std::uint32_t error_high, char *error, CDriver &driver) {
    CChannelBlockSet &blocks = Blocks();
    unsigned long cookie = 0;
    CChannelBlock block;
    std::uint8_t flag = 0;
    std::uint32_t listed = 0;
    while (driver.EnumerateChannels(cookie, block.type, block.direction, block.first, block.count, flag)) {
        if (++listed > kMostBlocks) {
            return Refuse(texts::kTooManyBlocks, error_high, error);
        }
        CChannelBlock taken;
        if (blocks.Find(block.first, taken)) {
            std::string reason(texts::kRedefined);
            reason.append(" (").append(kq_base::DecimalText(taken.first)).append(")");
            return Refuse(reason, error_high, error);
        }
        blocks.Insert(block);
    }
    return true;
}

bool CChannelMap::Load(std::uint32_t error_high, char *error, std::string_view text) {
    std::string reason;
    return CDmfMapReader(text, Blocks()).Read(reason) || Refuse(reason, error_high, error);
}

CChannelBlockSet &CChannelMap::Blocks() {
    if (blocks_ == nullptr) {
        blocks_ = std::make_shared<CChannelBlockSet>();
    }
    return *blocks_;
}

bool CChannelMap::Check(std::uint32_t error_high, char *error, std::uint32_t first, std::uint32_t count,
                        std::uint32_t type, kq_def::TDirection direction) const {
    if (type == kq_def::kTagBuffer) {
        return true;
    }
    if (blocks_ == nullptr || blocks_->IsEmpty()) {
        return Refuse(texts::kBadChannel, error_high, error);
    }
    const std::uint64_t end = std::uint64_t{first} + count;
    std::uint64_t channel = first;
    while (channel < end) {
        CChannelBlock block;
        if (channel > 0xFFFFFFFF || !blocks_->Find(static_cast<std::uint32_t>(channel), block)) {
            return Refuse(texts::kBadChannel, error_high, error);
        }
        if (block.direction != kq_def::kDirectionEither && block.direction != direction) {
            return Refuse(texts::kBadDirection, error_high, error);
        }
        if (block.type != type) {
            return Refuse(texts::kBadType, error_high, error);
        }
        // The lowest block that holds a channel is also the lowest for all its channels above.
        channel = std::uint64_t{block.Last()} + 1;
    }
    return true;
}

bool CChannelMap::Get(std::uint32_t error_high, char *error, std::uint32_t channel, std::uint32_t &type,
                      kq_def::TDirection &direction) const {
    CChannelBlock block;
    if (blocks_ == nullptr || !blocks_->Find(channel, block)) {
        return Refuse(texts::kBadChannel, error_high, error);
    }
    type = block.type;
    direction = block.direction == kq_def::kDirectionEither ? kq_def::kDirectionBoth : block.direction;
    return true;
}

void CChannelMap::Done() {
    if (blocks_ != nullptr) {
        blocks_->Clear();
        blocks_.reset();
    }
}

}  // namespace kq_drv
