#pragma once

#include "platform/AudioOutput.h"

namespace tirlo {

class MainQueue;

/// Plays through OpenAL, on a thread of its own, so that a slow sound server never holds up a frame.
///
/// The thread and the device sleep while nothing sounds. A device that is missing or was lost is
/// looked for again when something is to be played. One object a process.
class AlAudioOutput final : public AudioOutput
{
public:
    /// Touches nothing yet: the first voices begin to open the device.
    explicit AlAudioOutput(const MainQueue &clock);
    ~AlAudioOutput() override;

    [[nodiscard]] std::vector<std::unique_ptr<AudioVoice>> makeVoices(const QByteArray &file,
                                                                      int count) override;

private:
    class Player;
    class Voice;

    const MainQueue &m_clock;
    std::unique_ptr<Player> m_player;
};

} // namespace tirlo
