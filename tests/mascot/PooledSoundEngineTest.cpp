#include "mascot/PooledSoundEngine.h"

#include "mascot/SoundNames.h"
#include "platform/linux/AudioClip.h"
#include "support/FakeAudioOutput.h"
#include "support/StoreParts.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <span>

using namespace tirlo;
using testing::ElementsAre;

namespace {

class PooledSoundEngineTest : public testing::Test, protected StoreParts
{
protected:
    void addFile(const QString &name, const QByteArray &bytes)
    {
        QFile file(folder.filePath(name + QStringLiteral(".wav")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    /// Each voice's number of plays, in the order of the pool.
    std::vector<int> plays(const QByteArray &file) const
    {
        std::vector<int> counts;
        for (const auto &voice : output.voicesOf(file))
            counts.push_back(voice->plays);
        return counts;
    }

    FakeAudioOutput output;
    QTemporaryDir folder;
};

TEST_F(PooledSoundEngineTest, TakesTheFirstIdleVoiceAndElseRestartsTheFirst)
{
    addFile("tick", "tick");
    PooledSoundEngine engine(state, output, folder.path());
    engine.preload();
    for (int i = 0; i < 3; ++i)
        engine.play("tick");
    EXPECT_THAT(plays("tick"), ElementsAre(1, 1, 1));
    engine.play("tick");
    engine.play("tick");
    EXPECT_THAT(plays("tick"), ElementsAre(3, 1, 1)) << "the first again, not the oldest";

    output.voices[1]->isPlaying = false;
    output.voices[2]->isPlaying = false;
    engine.play("tick");
    EXPECT_THAT(plays("tick"), ElementsAre(3, 2, 1));
}

TEST_F(PooledSoundEngineTest, MissingDamagedAndUnknownSoundsAreSilentAndHurtNoOther)
{
    addFile("peek", "damaged");
    addFile("open", "open");
    addFile("stranger", "stranger");
    PooledSoundEngine engine(state, output, folder.path());
    engine.play("open");
    EXPECT_EQ(output.voices.size(), 3U) << "what is played first needs no preload()";
    engine.preload();

    for (const char *name : {"peek", "close", "stranger", "", "../open", "Open"})
        engine.play(name);
    EXPECT_EQ(output.voices.size(), 3U) << "only the names of the list are loaded, and once";
    EXPECT_THAT(plays("open"), ElementsAre(1, 0, 0));
}

TEST_F(PooledSoundEngineTest, SwitchedOffItPlaysNoVoice)
{
    addFile("open", "open");
    PooledSoundEngine engine(state, output, folder.path());
    engine.preload();
    state.soundEnabled = false;
    engine.play("open");
    state.soundEnabled = true;
    engine.enabled = false;
    engine.play("open");
    EXPECT_THAT(plays("open"), ElementsAre(0, 0, 0));
    engine.enabled = true;
    engine.play("open");
    EXPECT_THAT(plays("open"), ElementsAre(1, 0, 0));
}

TEST_F(PooledSoundEngineTest, TheStoresVolumeReachesAllVoicesThoseThatSoundIncluded)
{
    state.soundVolume = 0.05;
    addFile("open", "open");
    addFile("love", "love");
    PooledSoundEngine engine(state, output, folder.path());
    engine.play("open");
    EXPECT_EQ(output.voices[0]->gainAtPlay, 0.05F) << "the persisted one is there from the start";
    engine.preload();
    state.soundVolume = 0.2;
    for (const auto &voice : output.voices)
        EXPECT_EQ(voice->gain, 0.2F);
    engine.play("love");
    EXPECT_EQ(output.voicesOf("love")[0]->gainAtPlay, 0.2F);
}

double peakOf(std::span<const std::int16_t> samples)
{
    double peak = 0;
    for (const std::int16_t sample : samples)
        peak = std::max(peak, std::abs(sample / 32768.0));
    return peak;
}

TEST_F(PooledSoundEngineTest, ItsFilesAreAllThereShortSoftAndWithoutClicks)
{
    PooledSoundEngine engine(state, output);
    engine.preload();
    EXPECT_EQ(output.voices.size(), 3 * soundNames.size());
    for (const QLatin1String name : soundNames) {
        SCOPED_TRACE(name.data());
        QFile file(QStringLiteral(":/sounds/%1.wav").arg(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const auto clip = decodeAudioClip(bytes);
        ASSERT_TRUE(clip);
        const std::span<const std::int16_t> samples(clip->samples);
        EXPECT_EQ(bytes.size(), 44 + qsizetype(samples.size_bytes()))
            << "a header, one channel of 16 bits, and no ballast";
        EXPECT_EQ(clip->rate, 48000);
        const double length = double(samples.size()) / clip->rate;
        EXPECT_GE(length, 0.04);
        EXPECT_LE(length, name == QLatin1String("greet") ? 1.2 : 0.6);

        const double peak = peakOf(samples);
        EXPECT_LT(peak, std::pow(10, -6 / 20.0));
        EXPECT_GT(peak, 0.03);
        // A millisecond is long enough to hear a click in.
        EXPECT_LT(peakOf(samples.first(3)), 0.001);
        EXPECT_LT(peakOf(samples.last(48)), 0.0015);
    }
}

} // namespace
