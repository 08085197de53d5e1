#pragma once

#include <QByteArray>

#include <memory>
#include <vector>

namespace tirlo {

/// One player of one clip.
class AudioVoice
{
public:
    virtual ~AudioVoice() = default;

    /// True from play() until the clip has sounded to its end; soon false again without a device.
    [[nodiscard]] virtual bool isPlaying() const = 0;

    /// Sets the loudness, 0...1, linear; it reaches a voice that is sounding.
    virtual void setGain(float gain) = 0;

    /// Plays the clip from its beginning, cutting short what the voice plays.
    virtual void play() = 0;
};

/// Plays short clips, several at once; without a sound device they are silent.
class AudioOutput
{
public:
    virtual ~AudioOutput() = default;

    /// Makes voices ready for the clip in a sound file's bytes; none if they can't be understood.
    ///
    /// The clip is decoded here, so that playing it costs nothing. The voices must not outlive the
    /// output.
    [[nodiscard]] virtual std::vector<std::unique_ptr<AudioVoice>> makeVoices(
        const QByteArray &file, int count)
        = 0;
};

} // namespace tirlo
