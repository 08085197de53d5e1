#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <vector>

namespace tirlo {

/// A short piece of sound in one channel.
struct AudioClip
{
    /// Samples a second.
    int rate = 0;
    std::vector<std::int16_t> samples;

    bool operator==(const AudioClip &) const = default;
};

/// The clip in a sound file's bytes, its channels mixed into one; nothing if it is damaged or
/// empty.
[[nodiscard]] std::optional<AudioClip> decodeAudioClip(const QByteArray &file);

} // namespace tirlo
