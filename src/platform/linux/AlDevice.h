#pragma once

#include <AL/alc.h>

#include <memory>
#include <unordered_map>

namespace tirlo {

struct AudioClip;

/// The user's sound device, open; everything here belongs to the one thread that opened it.
///
/// It is paused at first and mixes nothing until it is resumed.
class AlDevice
{
public:
    /// Stands for one voice; only its address matters.
    using VoiceId = const void *;
    using Clip = std::shared_ptr<const AudioClip>;

    /// Opens the device; null when there is none.
    [[nodiscard]] static std::unique_ptr<AlDevice> open();

    ~AlDevice();
    AlDevice(const AlDevice &) = delete;
    AlDevice &operator=(const AlDevice &) = delete;

    /// False once the device was unplugged or its server has gone: it won't sound again.
    [[nodiscard]] bool isConnected() const;

    /// Keeps the mixer from running and waking; what sounds stands still.
    void pause();

    /// Lets the mixer run.
    void resume();

    /// Plays the voice's clip, always the same, from its beginning; `gain` is 0...1.
    void play(VoiceId voice, const Clip &clip, float gain);

    /// Sets the gain of a voice that has played before.
    void setGain(VoiceId voice, float gain);

    /// Stops the voice and drops what was kept for it.
    void release(VoiceId voice);

    /// True while the voice's clip sounds.
    [[nodiscard]] bool isPlaying(VoiceId voice) const;

private:
    using SetRunning = void (*)(ALCdevice *);

    AlDevice(ALCdevice *device, ALCcontext *context);
    [[nodiscard]] unsigned bufferOf(const Clip &clip);
    [[nodiscard]] unsigned sourceOf(VoiceId voice, const Clip &clip);

    ALCdevice *m_device;
    ALCcontext *m_context;
    SetRunning m_pause = nullptr;
    SetRunning m_resume = nullptr;
    bool m_isPaused = false;
    std::unordered_map<Clip, unsigned> m_buffers;
    std::unordered_map<VoiceId, unsigned> m_sources;
};

} // namespace tirlo
