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

PooledSoundEngine::PooledSoundEngine(AppState &state, AudioOutput &output, QString folder)
    : m_state(state)
    , m_output(output)
    , m_folder(std::move(folder))
    , m_volume(float(state.soundVolume.value()))
{
    openResources();
    m_observers.follow(state.soundVolume,
                       [this] { setVolume(float(m_state.soundVolume.value())); });
}

void PooledSoundEngine::preload()
{
    for (const QLatin1String name : soundNames)
        players(name);
}

void PooledSoundEngine::play(const QString &name)
{
    if (!m_state.soundEnabled)
        return;
    const Pool &pool = players(name);
    if (pool.empty())
        return;

    const auto idle = std::ranges::find_if_not(pool, &AudioVoice::isPlaying);
    AudioVoice &voice = idle != pool.end() ? **idle : *pool.front();
    voice.setGain(m_volume);
    voice.play();
}

const PooledSoundEngine::Pool &PooledSoundEngine::players(const QString &name)
{
    static const Pool none;
    const auto found = m_players.find(name);
    if (found != m_players.end())
        return found->second;
    if (std::ranges::find(soundNames, name) == soundNames.end())
        return none;

    Pool &pool = m_players[name];
    QFile file(QStringLiteral("%1/%2.wav").arg(m_folder, name));
    if (!file.open(QIODevice::ReadOnly))
        return pool;
    pool = m_output.makeVoices(file.readAll(), poolSize);
    for (const auto &voice : pool)
        voice->setGain(m_volume);
    return pool;
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
