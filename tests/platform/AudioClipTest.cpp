#include "platform/linux/AudioClip.h"

#include "WavBytes.h"

#include <gmock/gmock.h>

using namespace tirlo;
using testing::ElementsAre;

namespace {

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
