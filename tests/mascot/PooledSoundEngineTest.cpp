#include "mascot/PooledSoundEngine.h"

#include "core/AppState.h"
#include "mascot/SoundNames.h"
#include "support/FakeAudioOutput.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace tirlo;
using testing::ElementsAre;

namespace {

class PooledSoundEngineTest : public testing::Test
{
protected:
    void SetUp() override { state.emplace(store, queue); }

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

    ManualQueue queue;
    MemoryStore store;
    std::optional<AppState> state;
    FakeAudioOutput output;
    QTemporaryDir folder;
};

TEST_F(PooledSoundEngineTest, TakesTheFirstIdleVoiceAndElseRestartsTheFirst)
{
    addFile("tick", "tick");
    PooledSoundEngine engine(*state, output, folder.path());
    engine.preload();
    ASSERT_EQ(output.voices.size(), 3U);

    for (int i = 0; i < 3; ++i)
        engine.play("tick");
    EXPECT_THAT(plays("tick"), ElementsAre(1, 1, 1));
    engine.play("tick");
    EXPECT_THAT(plays("tick"), ElementsAre(2, 1, 1));
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
    PooledSoundEngine engine(*state, output, folder.path());
    engine.play("open");
    EXPECT_EQ(output.voices.size(), 3U) << "what is played first needs no preload()";
    engine.preload();

    for (const char *name : {"peek", "close", "stranger", "", "../open", "Open"})
        engine.play(name);
    EXPECT_EQ(output.voices.size(), 3U) << "only the names of the list are loaded, and once";
    EXPECT_THAT(plays("open"), ElementsAre(1, 0, 0));
}

TEST_F(PooledSoundEngineTest, SwitchedOffItTouchesNoVoice)
{
    addFile("open", "open");
    PooledSoundEngine engine(*state, output, folder.path());
    engine.preload();
    for (const auto &voice : output.voices)
        voice->gain = -1;

    state->soundEnabled = false;
    engine.play("open");
    state->soundEnabled = true;
    engine.enabled = false;
    engine.play("open");
    for (const auto &voice : output.voices) {
        EXPECT_EQ(voice->plays, 0);
        EXPECT_EQ(voice->gain, -1);
    }
    engine.enabled = true;
    engine.play("open");
    EXPECT_THAT(plays("open"), ElementsAre(1, 0, 0));
}

TEST_F(PooledSoundEngineTest, TheStoresVolumeReachesAllVoicesThoseThatSoundIncluded)
{
    store.setValue("soundVolume", 0.05);
    state.emplace(store, queue);
    addFile("open", "open");
    addFile("love", "love");
    PooledSoundEngine engine(*state, output, folder.path());
    EXPECT_EQ(engine.volume(), 0.05F) << "the persisted volume is there from the start";
    engine.preload();
    for (const auto &voice : output.voices)
        EXPECT_EQ(voice->gain, 0.05F);

    engine.play("open");
    state->soundVolume = 0.2;
    EXPECT_EQ(engine.volume(), 0.2F);
    for (const auto &voice : output.voices)
        EXPECT_EQ(voice->gain, 0.2F);
    EXPECT_TRUE(output.voicesOf("open")[0]->isPlaying);
    engine.play("love");
    EXPECT_EQ(output.voicesOf("love")[0]->gainAtPlay, 0.2F);
}

TEST_F(PooledSoundEngineTest, ItsOwnSoundsAreThereForEveryName)
{
    PooledSoundEngine engine(*state, output);
    EXPECT_EQ(engine.volume(), 0.12F);
    engine.preload();
    EXPECT_EQ(soundNames.size(), 28U);
    EXPECT_EQ(output.voices.size(), 28U * 3U);
}

} // namespace
