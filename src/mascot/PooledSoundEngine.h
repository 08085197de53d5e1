#pragma once

#include "core/SoundEngine.h"
#include "platform/AudioOutput.h"
#include "ui/Observers.h"

#include <unordered_map>

namespace tirlo {

class AppState;

/// Plays the effects on a small pool of ready voices each, so that a sound can overlap itself.
///
/// It follows the store's switch and volume. Main thread only.
class PooledSoundEngine final : public SoundEngine
{
public:
    /// Voices of each sound: as many copies of it sound at once, at most.
    static constexpr int poolSize = 3;

    /// Takes the store's volume. The folder holds a file NAME.wav for each effect; a missing or
    /// damaged one is silent.
    PooledSoundEngine(AppState &state, AudioOutput &output,
                      QString folder = QStringLiteral(":/sounds"));

    /// Makes all effects ready, so that none is decoded when it is played.
    void preload();

    /// Plays the effect on the first idle voice of its pool, or else cuts the first one short.
    void play(const QString &name) override;

    /// The loudness of all effects, 0...1, linear.
    [[nodiscard]] float volume() const { return m_volume; }

    /// Sets the loudness of all effects, those that sound at the moment included.
    void setVolume(float volume);

private:
    using Pool = std::vector<std::unique_ptr<AudioVoice>>;

    /// The effect's voices, made at the first call; none if it can't be heard.
    const Pool &players(const QString &name);

    AppState &m_state;
    AudioOutput &m_output;
    const QString m_folder;
    float m_volume = 0.12F;
    std::unordered_map<QString, Pool> m_players;
    Observers m_observers;
};

} // namespace tirlo
