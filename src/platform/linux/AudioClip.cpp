#include "AudioClip.h"

#include <sndfile.h>

#include <algorithm>
#include <memory>
#include <numeric>

namespace tirlo {

namespace {

/// More than any effect has; a damaged header may promise hours.
constexpr sf_count_t longestClip = 60 * 48000;

struct Bytes
{
    const QByteArray &data;
    sf_count_t position = 0;
};

sf_count_t size(void *user)
{
    return static_cast<Bytes *>(user)->data.size();
}

sf_count_t seek(sf_count_t offset, int whence, void *user)
{
    auto &bytes = *static_cast<Bytes *>(user);
    if (whence == SEEK_CUR)
        offset += bytes.position;
    else if (whence == SEEK_END)
        offset += bytes.data.size();
    bytes.position = std::clamp<sf_count_t>(offset, 0, bytes.data.size());
    return bytes.position;
}

sf_count_t read(void *target, sf_count_t count, void *user)
{
    auto &bytes = *static_cast<Bytes *>(user);
    count = std::clamp<sf_count_t>(count, 0, bytes.data.size() - bytes.position);
    std::copy_n(bytes.data.constData() + bytes.position, count, static_cast<char *>(target));
    bytes.position += count;
    return count;
}

sf_count_t write(const void *, sf_count_t, void *)
{
    return 0;
}

sf_count_t tell(void *user)
{
    return static_cast<Bytes *>(user)->position;
}

} // namespace

std::optional<AudioClip> decodeAudioClip(const QByteArray &file)
{
    Bytes bytes{file};
    SF_VIRTUAL_IO access{size, seek, read, write, tell};
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, decltype(&sf_close)> sound(
        sf_open_virtual(&access, SFM_READ, &info, &bytes), sf_close);
    if (!sound || info.channels < 1 || info.samplerate < 1 || info.frames > longestClip)
        return std::nullopt;

    std::vector<std::int16_t> interleaved(std::size_t(info.frames * info.channels));
    const sf_count_t frames = sf_readf_short(sound.get(), interleaved.data(), info.frames);
    if (frames < 1)
        return std::nullopt;

    AudioClip clip{info.samplerate, std::vector<std::int16_t>(std::size_t(frames))};
    auto first = interleaved.cbegin();
    for (std::int16_t &sample : clip.samples) {
        sample = std::int16_t(std::accumulate(first, first + info.channels, 0) / info.channels);
        first += info.channels;
    }
    return clip;
}

} // namespace tirlo
