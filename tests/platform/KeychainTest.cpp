#include "platform/linux/Keychain.h"

#include "PrivateKeyring.h"
#include "support/Files.h"

#include <gtest/gtest.h>

#include <optional>

using namespace tirlo;

namespace {

constexpr double soon = 0.2;
const QString key = "github-token";
const QString other = "vercel-token";

class KeychainTest : public testing::Test
{
protected:
    /// Ends the program's keychain, with all it had to do, and starts it anew.
    Keychain &restart(double answerLimit = 10)
    {
        m_keychain.reset();
        return m_keychain.emplace(file, answerLimit);
    }

    void end() { m_keychain.reset(); }

    QTemporaryDir folder;
    const QString file = folder.filePath("support/secrets.json");
    PrivateKeyring keyring;

private:
    std::optional<Keychain> m_keychain;
};

TEST_F(KeychainTest, KeepsOneTextAKeyInTheKeyringOrInAFileThatOnlyItsOwnerReads)
{
    for (const bool hasKeyring : {false, true}) {
        ASSERT_TRUE(!hasKeyring || keyring.start());
        restart().save(key, "first");
        restart().save(key, "zwölf 🔑");
        restart().save(other, QString());
        EXPECT_EQ(restart().load(key), "zwölf 🔑");
        EXPECT_EQ(restart().load(other), QString());
        EXPECT_EQ(restart().load("never-set"), std::nullopt);
        end();
        if (hasKeyring) {
            EXPECT_EQ(keyring.count("github-token"), 1);
            keyring.putBytes("n8n-url", QByteArray("cut \xe2\x82", 6));
            EXPECT_EQ(restart().load("n8n-url"), std::nullopt) << "it is no text";
        } else {
            EXPECT_EQ(QFile::permissions(file) & QFileDevice::Permissions(0x7077), 0x6000);
            EXPECT_EQ(QFileInfo(file).dir().entryList(QDir::Files).size(), 1);
        }
        for (const QString &each : {key, other, QString("never-set")})
            restart().remove(each);
        EXPECT_EQ(restart().load(key), std::nullopt);
        end();
        EXPECT_FALSE(contents(file).contains("zwölf"));
    }
    EXPECT_EQ(keyring.count("github-token"), 0);
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(KeychainTest, AKeyringThatComesLaterTakesOverAndTheFileGoes)
{
    ASSERT_TRUE(keyring.start());
    restart().save(key, "old");
    restart().save(other, "old");
    end();
    keyring.stop();

    restart().save(key, "new");
    restart().remove(other);
    restart().save("n8n-url", "u");
    end();
    EXPECT_TRUE(QFile::exists(file));

    ASSERT_TRUE(keyring.start());
    EXPECT_EQ(restart().load(key), "new");
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_EQ(restart().load(key), "new");
    EXPECT_EQ(restart().load(other), std::nullopt) << "removed while the keyring was away";
    EXPECT_EQ(restart().load("n8n-url"), "u");
}

TEST_F(KeychainTest, AKeyringThatDoesNotAnswerIsNotWaitedFor)
{
    ASSERT_TRUE(keyring.start());
    restart().save(key, "old");
    end();
    keyring.freeze();
    EXPECT_EQ(restart(soon).load(key), std::nullopt);
    restart(soon).save(key, "new");
    end();
    EXPECT_TRUE(contents(file).contains("new"));
}

TEST_F(KeychainTest, ALockedKeyringIsLeftAsItIsWhenTheUserDoesNotUnlockIt)
{
    ASSERT_TRUE(keyring.start());
    restart().save(key, "locked away");
    end();
    keyring.stop();
    ASSERT_TRUE(keyring.startLocked());

    Keychain &keychain = restart();
    keychain.stopAsking();
    EXPECT_EQ(keychain.load(key), std::nullopt);
    keychain.save(other, "new");
    end();
    EXPECT_TRUE(contents(file).contains("new"));

    keyring.stop();
    ASSERT_TRUE(keyring.start());
    EXPECT_EQ(restart().load(key), "locked away");
    EXPECT_EQ(restart().load(other), "new");
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(KeychainTest, TheBusMayEndWithoutTheProgram)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the sanitizer misses the main thread's locks once the second bus has ended";
#endif
    auto passing = std::make_unique<PrivateKeyring>();
    ASSERT_TRUE(passing->start());
    Keychain &keychain = restart(soon);
    keychain.save(key, "first");
    EXPECT_EQ(keychain.load(key), "first");
    passing.reset();
    keychain.save(key, "second");
    EXPECT_EQ(restart(soon).load(key), "second");
}

TEST_F(KeychainTest, AFileThatIsNoListOfSecretsIsSetAside)
{
    restart().save(key, "old");
    end();
    QFile damaged(file);
    ASSERT_TRUE(damaged.resize(20));
    const QByteArray cut = contents(file);
    ASSERT_TRUE(damaged.setPermissions(QFileDevice::Permissions(0x6044)));
    EXPECT_EQ(restart().load(key), std::nullopt);
    restart().save(key, "new");
    EXPECT_EQ(restart().load(key), "new");
    EXPECT_EQ(contents(file + ".corrupt"), cut);
    EXPECT_EQ(QFile::permissions(file + ".corrupt") & QFileDevice::Permissions(0x0077), 0);
}

} // namespace
