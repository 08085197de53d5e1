#include "AlAudioOutput.h"

#include "AlDevice.h"
#include "AudioClip.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <limits>
#include <mutex>
#include <thread>
#include <utility>

#include <malloc.h>

namespace tirlo {

namespace {

/// How often the end of what sounds is looked for.
constexpr std::chrono::milliseconds lookPeriod{20};
/// Looks from the last end to the pause, so that the device first plays out what was mixed for it.
constexpr int looksBeforePause = 8;
/// Seconds between two looks for a device that is missing.
constexpr double searchPeriod = 5;
/// A sound that comes later than this says nothing any more: better none than a burst of them after
/// the device took long to open.
constexpr std::chrono::milliseconds latestStart{500};

/// How long the program's end waits for the device to close.
constexpr std::chrono::seconds stopPatience{1};

using SteadyClock = std::chrono::steady_clock;

/// What a voice and the player's thread share; the voice may go first.
struct VoiceState
{
    explicit VoiceState(std::shared_ptr<const AudioClip> voiceClip)
        : clip(std::move(voiceClip))
    {
    }

    const std::shared_ptr<const AudioClip> clip;
    /// The calls of play() so far, and the one that has ended last: it sounds while they differ.
    std::atomic<unsigned> asked = 0;
    std::atomic<unsigned> ended = 0;
    std::atomic<float> gain = 1;
};

using VoicePointer = std::shared_ptr<VoiceState>;

} // namespace

/// The thread that owns the device, and its queue of work. The thread keeps it alive.
class AlAudioOutput::Player
{
public:
    static std::shared_ptr<Player> start(std::chrono::milliseconds closeDelay)
    {
        auto player = std::shared_ptr<Player>(new Player(closeDelay));
        std::thread([player] { player->run(); }).detach();
        return player;
    }

    /// Has the thread end; one that hangs in a sound server is left to the end of the process.
    void stop()
    {
        post([this] { m_isDone = true; });
        std::unique_lock guard(m_lock);
        m_end.wait_for(guard, stopPatience, [this] { return m_hasEnded; });
    }

    void play(const VoicePointer &voice, double now)
    {
        const unsigned turn = ++voice->asked;
        const auto latest = SteadyClock::now() + latestStart;
        post([=, this] { sound({voice, turn}, now, latest); });
    }

    void setGain(const VoicePointer &voice, float gain)
    {
        voice->gain = gain;
        post([this, voice] {
            if (m_device)
                m_device->setGain(voice.get(), voice->gain);
        });
    }

    void release(const VoicePointer &voice)
    {
        post([this, voice] {
            forget(voice);
            if (m_device)
                m_device->release(voice.get());
        });
    }

private:
    struct Sounding
    {
        VoicePointer voice;
        unsigned turn;
    };

    explicit Player(std::chrono::milliseconds closeDelay)
        : m_closeDelay(closeDelay)
    {
    }

    void post(std::function<void()> work)
    {
        {
            const std::lock_guard guard(m_lock);
            m_work.push_back(std::move(work));
        }
        m_wake.notify_one();
    }

    void run()
    {
        while (!m_isDone) {
            const auto works = takeWork();
            if (works.empty() && m_looksLeft == 0)
                closeDevice();
            for (const auto &work : works)
                work();
            dropEnded();
            if (works.empty() && m_looksLeft > 0 && --m_looksLeft == 0)
                m_device->pause();
        }
        m_device.reset();

        const std::lock_guard guard(m_lock);
        m_hasEnded = true;
        m_end.notify_one();
    }

    /// Sleeps until there is work or, while the device is open, until it is time to look at it or
    /// to close it.
    std::vector<std::function<void()>> takeWork()
    {
        std::unique_lock guard(m_lock);
        const auto hasWork = [this] { return !m_work.empty(); };
        if (m_looksLeft > 0)
            m_wake.wait_for(guard, lookPeriod, hasWork);
        else if (m_device)
            m_wake.wait_for(guard, m_closeDelay, hasWork);
        else
            m_wake.wait(guard, hasWork);
        return std::exchange(m_work, {});
    }

    void sound(const Sounding &sounding, double now, SteadyClock::time_point latest)
    {
        const VoicePointer &voice = sounding.voice;
        forget(voice);
        const auto isLate = [latest] { return SteadyClock::now() > latest; };
        if (isLate() || !wakeDevice(now) || isLate()) {
            voice->ended = sounding.turn;
            return;
        }
        m_device->play(voice.get(), voice->clip, voice->gain);
        m_sounding.push_back(sounding);
    }

    void forget(const VoicePointer &voice)
    {
        std::erase_if(m_sounding, [&](const Sounding &other) { return other.voice == voice; });
    }

    /// Has the device run, opening it where need be; false if there is none.
    bool wakeDevice(double now)
    {
        if (m_device) {
            m_device->resume();
            if (!m_device->isConnected())
                closeDevice();
        }
        if (!m_device) {
            if (now - m_lastFailure < searchPeriod)
                return false;
            m_device = AlDevice::open();
            if (!m_device) {
                m_lastFailure = now;
                return false;
            }
            m_device->resume();
        }
        m_looksLeft = looksBeforePause;
        return true;
    }

    void closeDevice()
    {
        for (const Sounding &lost : m_sounding)
            lost.voice->ended = lost.turn;
        m_sounding.clear();
        m_looksLeft = 0;
        m_device.reset();
        malloc_trim(0);
    }

    void dropEnded()
    {
        if (!m_device)
            return;
        std::erase_if(m_sounding, [this](const Sounding &sounding) {
            if (m_device->isPlaying(sounding.voice.get()))
                return false;
            sounding.voice->ended = sounding.turn;
            return true;
        });
        if (!m_sounding.empty())
            m_looksLeft = looksBeforePause;
    }

    const std::chrono::milliseconds m_closeDelay;
    std::unique_ptr<AlDevice> m_device;
    std::vector<Sounding> m_sounding;
    int m_looksLeft = 0;
    double m_lastFailure = -std::numeric_limits<double>::infinity();
    bool m_isDone = false;

    std::mutex m_lock;
    std::condition_variable m_wake;
    std::vector<std::function<void()>> m_work;
    std::condition_variable m_end;
    bool m_hasEnded = false;
};

/// A voice: the main thread's end of it.
class AlAudioOutput::Voice final : public AudioVoice
{
public:
    Voice(Player &player, const MainQueue &clock, std::shared_ptr<const AudioClip> clip)
        : m_player(player)
        , m_clock(clock)
        , m_state(std::make_shared<VoiceState>(std::move(clip)))
    {
    }

    ~Voice() override { m_player.release(m_state); }

    [[nodiscard]] bool isPlaying() const override { return m_state->asked != m_state->ended; }
    void setGain(float gain) override { m_player.setGain(m_state, gain); }
    void play() override { m_player.play(m_state, m_clock.mediaTime()); }

private:
    Player &m_player;
    const MainQueue &m_clock;
    const VoicePointer m_state;
};

AlAudioOutput::AlAudioOutput(const MainQueue &clock, std::chrono::milliseconds closeDelay)
    : m_clock(clock)
    , m_closeDelay(closeDelay)
{
}

AlAudioOutput::~AlAudioOutput()
{
    if (m_player)
        m_player->stop();
}

std::vector<std::unique_ptr<AudioVoice>> AlAudioOutput::makeVoices(const QByteArray &file,
                                                                   int count)
{
    std::optional<AudioClip> decoded = decodeAudioClip(file);
    if (!decoded)
        return {};
    if (!m_player)
        m_player = Player::start(m_closeDelay);
    const auto clip = std::make_shared<const AudioClip>(std::move(*decoded));
    std::vector<std::unique_ptr<AudioVoice>> voices;
    voices.reserve(std::size_t(std::max(count, 0)));
    for (int i = 0; i < count; ++i)
        voices.push_back(std::make_unique<Voice>(*m_player, m_clock, clip));
    return voices;
}

} // namespace tirlo
