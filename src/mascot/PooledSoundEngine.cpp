#include "PooledSoundEngine.h"

#include "SoundNames.h"
#include "core/AppState.h"

#include <QFile>

#include <algorithm>

// Resources of a static library are only there once asked for.
static void openResources()
{
    Q_INIT_RESOURCE(sounds);
}

namespace tirlo {

PooledSoundEngine::PooledSoundEngine(AppState &state, AudioOutput &output)
    : m_state(state)
    , m_output(output)
    , m_volume(float(state.soundVolume.value()))
{
    openResources();
    m_observers.follow(state.soundVolume,
                       [this] { setVolume(float(m_state.soundVolume.value())); });
}

void PooledSoundEngine::preload(const QString &folder)
{
    for (const QLatin1String name : soundNames) {
        QFile file(QStringLiteral("%1/%2.wav").arg(folder, name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        Pool pool = m_output.makeVoices(file.readAll(), poolSize);
        if (pool.empty())
            continue;
        for (const auto &voice : pool)
            voice->setGain(m_volume);
        m_players.insert_or_assign(name, std::move(pool));
    }
}

void PooledSoundEngine::play(const QString &name)
{
    if (!enabled || !m_state.soundEnabled)
        return;
    const auto found = m_players.find(name);
    if (found == m_players.end())
        return;

    const Pool &pool = found->second;
    const auto idle = std::ranges::find_if_not(pool, &AudioVoice::isPlaying);
    AudioVoice &voice = idle != pool.end() ? **idle : *pool.front();
    voice.setGain(m_volume);
    voice.play();
}

void PooledSoundEngine::setVolume(float volume)
{
    m_volume = volume;
    for (const auto &[name, pool] : m_players) {
        for (const auto &voice : pool)
            voice->setGain(volume);
    }
}

} // namespace tirlo
