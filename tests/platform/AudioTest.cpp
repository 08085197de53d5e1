#include "platform/linux/AlAudioOutput.h"
#include "platform/linux/AudioClip.h"
#include "platform/linux/QtMainQueue.h"
#include "support/ManualQueue.h"

#include <QDataStream>
#include <QDir>
#include <QTest>

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

using namespace tirlo;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

/// The bytes of a wave file of 16 bits with these samples, those of all channels in turn.
QByteArray wavBytes(const std::vector<std::int16_t> &samples, int channels = 1, int rate = 48000)
{
    const auto dataSize = quint32(samples.size() * 2);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + dataSize);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(channels) << quint32(rate)
        << quint32(rate * channels * 2) << quint16(channels * 2) << quint16(16);
    out.writeRawData("data", 4);
    out << dataSize;
    for (const std::int16_t sample : samples)
        out << sample;
    return bytes;
}

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

int threadCount()
{
    return int(QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

/// How often the threads of this process, this one apart, wake in the next while.
long wakesOfOthers()
{
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    usleep(400'000);
    getrusage(RUSAGE_SELF, &after);
    return after.ru_nvcsw - before.ru_nvcsw - 1;
}

/// On a device that takes what is mixed at the pace of a real one and plays it to nobody.
struct AudioOutputTest : testing::Test
{
    AudioOutputTest()
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        // Read once a process, so a case that wants another driver has one of its own.
        qputenv("ALSOFT_DRIVERS", "null");
        // A sanitizer has a thread of its own from the first other one on.
        std::thread([] {}).join();
        threadsBefore = threadCount();
    }

    QtMainQueue queue;
    int threadsBefore;
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
    const long wakesOfSanitizer = wakesOfOthers();
    AlAudioOutput output(queue);
    const auto voices = output.makeVoices(tone(0.1), 1);
    for (const char *when : {"before the first sound", "after a sound", "after another"}) {
        QTest::qWait(400);
        EXPECT_LE(wakesOfOthers(), wakesOfSanitizer) << when;
        EXPECT_GT(threadCount(), threadsBefore) << "the output's own";
        voices[0]->play();
        ASSERT_TRUE(fallsSilent(*voices[0]));
    }
}

TEST_F(AudioOutputTest, ALongSilenceClosesTheDeviceAndTheNextSoundOpensIt)
{
    AlAudioOutput output(queue, std::chrono::milliseconds(50));
    const auto voices = output.makeVoices(tone(0.1), 1);
    // The output's own thread is there from the first sound on, the device's only while it is open.
    const int closed = threadsBefore + 1;
    for (const char *when : {"first", "again"}) {
        voices[0]->play();
        EXPECT_TRUE(QTest::qWaitFor([&] { return threadCount() > closed; })) << when;
        ASSERT_TRUE(fallsSilent(*voices[0])) << when;
        EXPECT_TRUE(QTest::qWaitFor([&] { return threadCount() == closed; })) << when;
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
    }
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

TEST(AudioClipTest, ReadsItsSamplesAndMixesChannelsIntoOne)
{
    const auto mono = decodeAudioClip(wavBytes({0, 1000, -32768, 32767}, 1, 22050));
    ASSERT_TRUE(mono);
    EXPECT_EQ(mono->rate, 22050);
    EXPECT_THAT(mono->samples, ElementsAre(0, 1000, -32768, 32767));

    const auto stereo = decodeAudioClip(wavBytes({100, 300, -32768, -32768, 32767, -32767}, 2));
    ASSERT_TRUE(stereo);
    EXPECT_THAT(stereo->samples, ElementsAre(200, -32768, 0));
}

TEST(AudioClipTest, WhatIsNoSoundIsNoClip)
{
    const QByteArray whole = wavBytes({1, 2, 3, 4});
    for (const QByteArray &damaged :
         {QByteArray(), QByteArray("RIFF"), QByteArray("no sound at all"), wavBytes({}),
          whole.left(20), QByteArray(whole).replace("fmt ", "xxxx"), wavBytes({1, 2}, 0),
          wavBytes({1, 2}, 1, 0), QByteArray(5000, '\xff')})
        EXPECT_FALSE(decodeAudioClip(damaged)) << damaged.left(40).toHex().constData();
}

TEST(AudioClipTest, AFileThatPromisesMoreThanItHoldsGivesWhatIsThere)
{
    const QByteArray whole = wavBytes(std::vector<std::int16_t>(100, 7));
    const auto cut = decodeAudioClip(whole.left(whole.size() - 100));
    ASSERT_TRUE(cut);
    EXPECT_THAT(cut->samples, testing::AllOf(testing::SizeIs(50), testing::Each(7)));

    QByteArray boastful = whole;
    boastful.replace(40, 4, QByteArray::fromHex("ffffff7f"));
    const auto small = decodeAudioClip(boastful);
    EXPECT_TRUE(!small || small->samples.size() == 100U);
}

} // namespace
