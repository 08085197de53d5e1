#pragma once

#include "SoundEngine.h"
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

    /// Takes the store's volume; it is silent until preload().
    PooledSoundEngine(AppState &state, AudioOutput &output);

    /// Makes all effects of the folder ready; a missing or damaged file stays silent.
    void preload(const QString &folder = QStringLiteral(":/sounds"));

    /// Plays the effect on the first idle voice of its pool, or else cuts the first one short.
    void play(const QString &name) override;

    /// The loudness of all effects, 0...1, linear.
    [[nodiscard]] float volume() const { return m_volume; }

    /// Sets the loudness of all effects, those that sound at the moment included.
    void setVolume(float volume);

    /// Keeps everything silent while false, whatever the user has chosen.
    bool enabled = true;

private:
    using Pool = std::vector<std::unique_ptr<AudioVoice>>;

    AppState &m_state;
    AudioOutput &m_output;
    float m_volume = 0.12F;
    std::unordered_map<QString, Pool> m_players;
    Observers m_observers;
};

} // namespace tirlo
