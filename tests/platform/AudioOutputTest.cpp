#include "platform/linux/AlAudioOutput.h"

#include "WavBytes.h"
#include "platform/linux/QtMainQueue.h"
#include "support/ManualQueue.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <set>
#include <string>
#include <thread>
#include <unistd.h>

using namespace tirlo;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// A steady tone.
QByteArray tone(double seconds)
{
    std::vector<std::int16_t> samples(std::size_t(seconds * 48000));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = std::int16_t(16000 * std::sin(2 * std::numbers::pi * 440 * double(i) / 48000));
    return wavBytes(samples);
}

bool fallsSilent(const AudioVoice &voice, int milliseconds = 2000)
{
    return QTest::qWaitFor([&] { return !voice.isPlaying(); }, milliseconds);
}

/// The threads of this process.
std::set<std::string> allThreads()
{
    std::set<std::string> threads;
    for (const auto &task : std::filesystem::directory_iterator("/proc/self/task"))
        threads.insert(task.path().filename());
    return threads;
}

/// On a device that takes what is mixed at the pace of a real one and plays it to nobody.
class AudioOutputTest : public testing::Test
{
protected:
    AudioOutputTest()
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        // Read once a process, so a case that wants another driver has one of its own.
        qputenv("ALSOFT_DRIVERS", "null");
    }

    /// How often the threads that came since the start have woken so far, and how many there are.
    std::pair<long, int> wakesOfOtherThreads() const
    {
        long wakes = 0;
        int threads = 0;
        for (const std::string &thread : allThreads()) {
            if (m_before.contains(thread))
                continue;
            ++threads;
            std::ifstream status("/proc/self/task/" + thread + "/status");
            for (std::string word; status >> word;) {
                long count = 0;
                if (word == "voluntary_ctxt_switches:" && status >> count)
                    wakes += count;
            }
        }
        return {wakes, threads};
    }

    QtMainQueue queue;

private:
    static std::set<std::string> threadsAtTheStart()
    {
        // A sanitizer has a thread of its own from the first other one on.
        std::thread([] {}).join();
        return allThreads();
    }

    const std::set<std::string> m_before = threadsAtTheStart();
};

TEST_F(AudioOutputTest, AVoiceSoundsToItsEndAndFromTheStartWhenPlayedAgain)
{
    AlAudioOutput output(queue);
    const auto voices = output.makeVoices(tone(0.3), 3);
    ASSERT_EQ(voices.size(), 3U);
    const double start = queue.mediaTime();
    voices[0]->play();
    voices[1]->play();
    EXPECT_TRUE(voices[0]->isPlaying()) << "from the call on";
    EXPECT_FALSE(voices[2]->isPlaying());
    QTest::qWait(200);
    voices[0]->play();
    ASSERT_TRUE(fallsSilent(*voices[1]));
    EXPECT_GE(queue.mediaTime() - start, 0.28);
    EXPECT_TRUE(voices[0]->isPlaying());
    ASSERT_TRUE(fallsSilent(*voices[0]));
    EXPECT_GE(queue.mediaTime() - start, 0.48);
}

TEST_F(AudioOutputTest, WhileNothingSoundsNoThreadWakes)
{
    AlAudioOutput output(queue);
    const auto voices = output.makeVoices(tone(0.1), 1);
    for (const char *when : {"before the first sound", "after a sound", "after another"}) {
        QTest::qWait(400);
        const auto before = wakesOfOtherThreads();
        usleep(400'000);
        const auto after = wakesOfOtherThreads();
        EXPECT_EQ(after.first - before.first, 0) << when;
        EXPECT_GE(after.second, 1) << "the output's own";

        voices[0]->play();
        ASSERT_TRUE(fallsSilent(*voices[0]));
    }
}

TEST_F(AudioOutputTest, ALongSilenceClosesTheDeviceAndTheNextSoundOpensIt)
{
    AlAudioOutput output(queue, std::chrono::milliseconds(50));
    const auto voices = output.makeVoices(tone(0.1), 1);
    const auto threads = [this] { return wakesOfOtherThreads().second; };
    // The output's own thread is there from the first sound on, the device's only while it is open.
    int closed = 1;
    for (const char *when : {"first", "again"}) {
        voices[0]->play();
        EXPECT_TRUE(QTest::qWaitFor([&] { return threads() > closed; })) << when;
        ASSERT_TRUE(fallsSilent(*voices[0])) << when;
        EXPECT_TRUE(QTest::qWaitFor([&] { return threads() == closed; })) << when;
    }
}

TEST_F(AudioOutputTest, VoicesMayGoWhileTheySoundAndTheOutputMayBeMadeAgain)
{
    for (int round = 0; round < 3; ++round) {
        AlAudioOutput output(queue);
        auto going = output.makeVoices(tone(0.2), 2);
        const auto staying = output.makeVoices(tone(0.1), 1);
        going[0]->play();
        staying[0]->play();
        going.clear();
        EXPECT_TRUE(fallsSilent(*staying[0]));
        staying[0]->play();
    }
}

/// The loudest of what was mixed between two moments, in seconds.
float peakOf(const std::vector<float> &samples, double from, double to)
{
    float peak = 0;
    for (auto i = std::size_t(from * 96000); i < std::size_t(to * 96000) && i < samples.size(); ++i)
        peak = std::max(peak, std::abs(samples[i]));
    return peak;
}

TEST_F(AudioOutputTest, AClipSoundsAsItIsTimesItsGainEvenWhileItSounds)
{
    EXPECT_EXIT(
        {
            // A device that writes what is mixed for it to a file.
            const QTemporaryDir folder;
            QFile settings(folder.filePath("alsoft.conf"));
            QFile recording(folder.filePath("recording"));
            settings.open(QIODevice::WriteOnly);
            settings.write("[wave]\nfile = " + recording.fileName().toUtf8() + "\n");
            settings.close();
            qputenv("ALSOFT_CONF", settings.fileName().toUtf8());
            qputenv("ALSOFT_DRIVERS", "wave");
            {
                AlAudioOutput output(queue);
                const auto voices = output.makeVoices(tone(1), 1);
                voices[0]->setGain(0.5F);
                voices[0]->play();
                QTest::qWait(500);
                voices[0]->setGain(0.05F);
                fallsSilent(*voices[0]);
            }
            recording.open(QIODevice::ReadOnly);
            // Pausing garbles the header; beyond it there are floats, left and right in turn.
            const QByteArray bytes = recording.readAll().mid(8);
            std::vector<float> samples(std::size_t(bytes.size()) / sizeof(float));
            std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
            const float loud = peakOf(samples, 0.1, 0.25);
            const float soft = peakOf(samples, 0.75, 0.95);
            std::fprintf(stderr, "%zu samples, %f then %f", samples.size(), loud, soft);
            std::_Exit(std::abs(loud - 0.244F) < 0.01F && std::abs(soft - 0.0244F) < 0.001F ? 0
                                                                                            : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(AudioOutputTest, WithoutADeviceItIsQuietInEveryWay)
{
    EXPECT_EXIT(
        {
            // A machine without a sound card.
            qputenv("ALSA_CONFIG_PATH", "/dev/null");
            qputenv("ALSOFT_DRIVERS", "alsa");
            ManualQueue clock;
            AlAudioOutput output(clock);
            const auto voices = output.makeVoices(tone(0.5), 2);
            bool isQuiet = voices.size() == 2;
            for (int i = 0; i < 3; ++i) {
                voices[0]->play();
                voices[1]->setGain(0.1F);
                isQuiet &= fallsSilent(*voices[0], 300);
                clock.advance(10);
            }
            std::_Exit(isQuiet ? 0 : 1);
        },
        testing::ExitedWithCode(0), Not(AnyOf(HasSubstr("ALSA"), HasSubstr("AL lib"))));
}

} // namespace
