#pragma once

#include "platform/AudioOutput.h"

#include <algorithm>

namespace tirlo {

/// What became of one voice; it sounds until a test says otherwise.
struct FakeVoiceLog
{
    QByteArray file;
    bool isPlaying = false;
    float gain = -1;
    int plays = 0;
    /// The gain at the moment of the last play().
    float gainAtPlay = -1;
};

/// Makes voices that sound until they are told to stop; a file of the bytes "damaged" has none.
class FakeAudioOutput final : public AudioOutput
{
public:
    [[nodiscard]] std::vector<std::unique_ptr<AudioVoice>> makeVoices(const QByteArray &file,
                                                                      int count) override
    {
        std::vector<std::unique_ptr<AudioVoice>> made;
        for (int i = 0; i < count && file != "damaged"; ++i) {
            voices.push_back(std::make_shared<FakeVoiceLog>(FakeVoiceLog{.file = file}));
            made.push_back(std::make_unique<Voice>(voices.back()));
        }
        return made;
    }

    /// The voices of the file, in the order of making.
    [[nodiscard]] std::vector<std::shared_ptr<FakeVoiceLog>> voicesOf(const QByteArray &file) const
    {
        std::vector<std::shared_ptr<FakeVoiceLog>> found;
        std::ranges::copy_if(voices, std::back_inserter(found),
                             [&](const auto &voice) { return voice->file == file; });
        return found;
    }

    std::vector<std::shared_ptr<FakeVoiceLog>> voices;

private:
    class Voice final : public AudioVoice
    {
    public:
        explicit Voice(std::shared_ptr<FakeVoiceLog> log)
            : m_log(std::move(log))
        {
        }

        [[nodiscard]] bool isPlaying() const override { return m_log->isPlaying; }
        void setGain(float gain) override { m_log->gain = gain; }
        void play() override
        {
            m_log->isPlaying = true;
            m_log->gainAtPlay = m_log->gain;
            ++m_log->plays;
        }

    private:
        std::shared_ptr<FakeVoiceLog> m_log;
    };
};

} // namespace tirlo
