#include "AlDevice.h"

#include "AudioClip.h"

#include <AL/al.h>
#include <AL/alext.h>
#include <AL/efx.h>

#include <dlfcn.h>

#include <cstdlib>
#include <mutex>

namespace tirlo {

namespace {

void dropMessage(const char *, int, const char *, int, const char *, ...) { }

/// The libraries print a dozen lines for a machine without a sound card, which is no fault.
void silenceLibraries()
{
    setenv("ALSOFT_LOGLEVEL", "0", 0);

    // The mixer library brings this one along where it uses it; there is nothing to link.
    const auto setHandler = reinterpret_cast<int (*)(decltype(&dropMessage))>(
        dlsym(RTLD_DEFAULT, "snd_lib_error_set_handler"));
    if (setHandler)
        setHandler(dropMessage);
}

template<typename Function>
Function extensionFunction(ALCdevice *device, const char *name)
{
    return reinterpret_cast<Function>(alcGetProcAddress(device, name));
}

} // namespace

std::unique_ptr<AlDevice> AlDevice::open()
{
    static std::once_flag silenced;
    std::call_once(silenced, silenceLibraries);

    ALCdevice *device = alcOpenDevice(nullptr);
    if (!device)
        return nullptr;
    // The rate of the clips, no room simulated on headphones, and no effects to keep memory for.
    const ALCint attributes[]
        = {ALC_FREQUENCY, 48000, ALC_HRTF_SOFT, ALC_FALSE, ALC_MAX_AUXILIARY_SENDS, 0, 0};
    ALCcontext *context = alcCreateContext(device, attributes);
    if (!context || !alcMakeContextCurrent(context)) {
        if (context)
            alcDestroyContext(context);
        alcCloseDevice(device);
        return nullptr;
    }
    return std::unique_ptr<AlDevice>(new AlDevice(device, context));
}

AlDevice::AlDevice(ALCdevice *device, ALCcontext *context)
    : m_device(device)
    , m_context(context)
{
    if (alcIsExtensionPresent(device, "ALC_SOFT_pause_device")) {
        m_pause = extensionFunction<SetRunning>(device, "alcDevicePauseSOFT");
        m_resume = extensionFunction<SetRunning>(device, "alcDeviceResumeSOFT");
    }
    pause();
}

AlDevice::~AlDevice()
{
    for (const auto &[voice, source] : m_sources)
        alDeleteSources(1, &source);
    for (const auto &[clip, buffer] : m_buffers)
        alDeleteBuffers(1, &buffer);
    alcMakeContextCurrent(nullptr);
    alcDestroyContext(m_context);
    alcCloseDevice(m_device);
}

bool AlDevice::isConnected() const
{
    if (!alcIsExtensionPresent(m_device, "ALC_EXT_disconnect"))
        return true;
    ALCint connected = ALC_TRUE;
    alcGetIntegerv(m_device, ALC_CONNECTED, 1, &connected);
    return connected != ALC_FALSE;
}

void AlDevice::pause()
{
    if (m_isPaused || !m_pause)
        return;
    m_pause(m_device);
    m_isPaused = true;
}

void AlDevice::resume()
{
    if (!m_isPaused || !m_resume)
        return;
    m_resume(m_device);
    m_isPaused = false;
}

void AlDevice::play(VoiceId voice, const Clip &clip, float gain)
{
    const ALuint source = sourceOf(voice, clip);
    alSourcef(source, AL_GAIN, gain);
    // Playing a source that plays starts it again.
    alSourcePlay(source);
}

void AlDevice::setGain(VoiceId voice, float gain)
{
    const auto source = m_sources.find(voice);
    if (source != m_sources.end())
        alSourcef(source->second, AL_GAIN, gain);
}

void AlDevice::release(VoiceId voice)
{
    const auto source = m_sources.find(voice);
    if (source == m_sources.end())
        return;
    alDeleteSources(1, &source->second);
    m_sources.erase(source);
}

bool AlDevice::isPlaying(VoiceId voice) const
{
    const auto source = m_sources.find(voice);
    if (source == m_sources.end())
        return false;
    ALint state = AL_STOPPED;
    alGetSourcei(source->second, AL_SOURCE_STATE, &state);
    return state == AL_PLAYING;
}

unsigned AlDevice::bufferOf(const Clip &clip)
{
    const auto [entry, isNew] = m_buffers.try_emplace(clip, 0);
    if (isNew) {
        // Left and right alike: a lone channel would be placed in space and lose strength by it.
        std::vector<std::int16_t> both;
        both.reserve(2 * clip->samples.size());
        for (const std::int16_t sample : clip->samples)
            both.insert(both.end(), 2, sample);
        alGenBuffers(1, &entry->second);
        alBufferData(entry->second, AL_FORMAT_STEREO16, both.data(),
                     ALsizei(both.size() * sizeof(both[0])), clip->rate);
    }
    return entry->second;
}

unsigned AlDevice::sourceOf(VoiceId voice, const Clip &clip)
{
    const auto [entry, isNew] = m_sources.try_emplace(voice, 0);
    if (isNew) {
        alGenSources(1, &entry->second);
        alSourcei(entry->second, AL_BUFFER, ALint(bufferOf(clip)));
    }
    return entry->second;
}

} // namespace tirlo
