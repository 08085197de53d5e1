#pragma once

#include "platform/AudioOutput.h"

#include <chrono>

namespace tirlo {

class MainQueue;

/// Plays through OpenAL, on a thread of its own, so that a slow sound server never holds up a
/// frame.
///
/// The thread and the device sleep while nothing sounds, and the device is closed after a while.
/// One that is closed, missing or lost is looked for when something is to be played. One object a
/// process. A sound that can't begin within half a second is left out.
class AlAudioOutput final : public AudioOutput
{
public:
    /// Touches nothing yet: the first sound opens the device.
    ///
    /// An open device holds 8 MB and lets its sound server's thread wake, so it is closed
    /// `closeDelay` after the last sound.
    explicit AlAudioOutput(const MainQueue &clock,
                           std::chrono::milliseconds closeDelay = std::chrono::seconds(30));
    ~AlAudioOutput() override;

    [[nodiscard]] std::vector<std::unique_ptr<AudioVoice>> makeVoices(const QByteArray &file,
                                                                      int count) override;

private:
    class Player;
    class Voice;

    const MainQueue &m_clock;
    const std::chrono::milliseconds m_closeDelay;
    std::shared_ptr<Player> m_player;
};

} // namespace tirlo
