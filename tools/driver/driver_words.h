#pragma once

#include <optional>
#include <string>

#include "driver/channels/dmf_words.h"
#include "tools/driver/driver_session.h"

/// The word of a driver map for the type of channels; none for a number that is no type.
inline std::optional<std::string> ChannelTypeWord(const TDriverChannels &channels) {
    const std::string word(kq_drv::TypeWord(channels.type));
    return word.empty() ? std::nullopt : std::optional(word);
}

/// The word for their direction, "either" for channels that go in any; none for a number that is no direction.
inline std::optional<std::string> ChannelDirectionWord(const TDriverChannels &channels) {
    const std::string word(channels.direction == kq_def::kDirectionEither ? "either"
                                                                          : kq_drv::DirectionWord(channels.direction));
    return word.empty() ? std::nullopt : std::optional(word);
}
