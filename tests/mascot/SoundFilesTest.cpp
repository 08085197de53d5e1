#include "mascot/PooledSoundEngine.h"
#include "mascot/SoundNames.h"

#include "core/AppState.h"
#include "platform/linux/AudioClip.h"
#include "support/FakeAudioOutput.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <span>
#include <string>

using namespace tirlo;

namespace {

constexpr int headerSize = 44;

double peakOf(std::span<const std::int16_t> samples)
{
    double peak = 0;
    for (const std::int16_t sample : samples)
        peak = std::max(peak, std::abs(sample / 32768.0));
    return peak;
}

class SoundFilesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ManualQueue queue;
        MemoryStore store;
        AppState state(store, queue);
        FakeAudioOutput output;
        // Opens the resources.
        const PooledSoundEngine engine(state, output);
        for (const QLatin1String name : soundNames) {
            QFile file(QStringLiteral(":/sounds/%1.wav").arg(name));
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.data();
            const QByteArray bytes = file.readAll();
            const auto clip = decodeAudioClip(bytes);
            ASSERT_TRUE(clip) << name.data();
            EXPECT_EQ(bytes.size(), headerSize + qsizetype(clip->samples.size()) * 2)
                << name.data() << " has one channel of 16 bits, and no ballast";
            clips[name.data()] = *clip;
        }
    }

    std::map<std::string, AudioClip> clips;
};

TEST_F(SoundFilesTest, AllAreShortSoftAndWithoutClicks)
{
    for (const auto &[name, clip] : clips) {
        SCOPED_TRACE(name);
        EXPECT_EQ(clip.rate, 48000);
        const std::span<const std::int16_t> samples(clip.samples);
        const double length = double(samples.size()) / clip.rate;
        EXPECT_GE(length, 0.04);
        EXPECT_LE(length, name == "greet" ? 1.2 : 0.6);

        const double peak = peakOf(samples);
        EXPECT_LT(peak, std::pow(10, -6 / 20.0));
        EXPECT_GT(peak, 0.03);
        // A millisecond is long enough to hear a click in.
        EXPECT_LT(peakOf(samples.first(3)), 0.001);
        EXPECT_LT(peakOf(samples.last(48)), 0.0015);
    }
}

} // namespace
