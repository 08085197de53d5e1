#include "core/KeychainStore.h"
#include "support/MemorySecretStore.h"

#include <gtest/gtest.h>

namespace tirlo {

struct KeychainStoreTest : testing::Test
{
    MemorySecretStore keychain;
    KeychainStore store{keychain};
};

TEST_F(KeychainStoreTest, ReadsTheKnownItemsOnce)
{
    keychain.items = {{"vercel-token", "v"}, {"resend-from", ""}, {"other", "x"}};
    store.load();
    keychain.calls.clear();
    EXPECT_EQ(store.get("vercel-token"), "v");
    EXPECT_EQ(store.get("resend-from"), "");
    EXPECT_EQ(store.get("other"), std::nullopt);
    EXPECT_TRUE(keychain.calls.isEmpty());
}

TEST_F(KeychainStoreTest, WritesThroughAndLeavesTheKeyringAloneWhereNothingStood)
{
    store.load();
    keychain.calls.clear();
    store.set("github-token", "");
    EXPECT_TRUE(keychain.calls.isEmpty());
    store.set("github-token", "ghp");
    EXPECT_EQ(keychain.items.value("github-token"), "ghp");
    store.set("github-token", "");
    EXPECT_EQ(store.get("github-token"), std::nullopt);
    EXPECT_EQ(keychain.calls, (QStringList{"save github-token", "remove github-token"}));
}

TEST_F(KeychainStoreTest, WhatIsSetBeforeTheItemsAreReadStands)
{
    store.set("github-token", "new");
    store.set("vercel-token", "");
    keychain.items = {{"github-token", "old"}, {"vercel-token", "old"}, {"stripe-api-key", "old"}};
    store.load();
    EXPECT_EQ(store.get("github-token"), "new");
    EXPECT_EQ(store.get("vercel-token"), std::nullopt);
    EXPECT_EQ(store.get("stripe-api-key"), "old");
}

} // namespace tirlo
