#include "platform/linux/FileKeyValueStore.h"

#include "support/Files.h"
#include "support/FileSizeLimit.h"
#include "support/ManualQueue.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

class FileKeyValueStoreTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    QString path = folder.filePath("support/settings.json");
    ManualQueue queue;

    FileKeyValueStore open() { return FileKeyValueStore(path, queue); }
};

TEST_F(FileKeyValueStoreTest, EveryTypeSurvivesARestartAndNoTypeReadsAsAnother)
{
    const std::pair<const char *, StoredValue> rows[]{{"flag", true},
                                                      {"whole", std::int64_t(9007199254740993)},
                                                      {"fraction", 0.12},
                                                      {"text", QStringLiteral("né \"à\" 🎈")},
                                                      {"bytes", QByteArray("\x00\xff[\"a\"]", 7)}};
    {
        auto written = open();
        for (const auto &[key, value] : rows)
            written.setValue(key, value);
        written.setValue("wholeReal", 15.0);
    }
    EXPECT_EQ(QFile::permissions(path) & 0x0077, 0) << "the file is its owner's alone";
    const auto store = open();
    for (const auto &[key, value] : rows)
        EXPECT_EQ(store.value(key), value) << key;
    EXPECT_EQ(store.real("wholeReal"), 15.0);
    EXPECT_FALSE(store.real("flag"));
    EXPECT_FALSE(store.boolean("whole"));
    EXPECT_FALSE(store.integer("fraction"));
    EXPECT_FALSE(store.text("bytes"));
    EXPECT_FALSE(store.bytes("text"));
    EXPECT_FALSE(store.value("missing"));
}

TEST_F(FileKeyValueStoreTest, WhatDoesNotParseIsSetAsideWholeOrLeftAlone)
{
    const QString aside = path + ".corrupt-20260314-092653";
    for (const QByteArray &content : QByteArrayList{"", "{\"soundVolume\": 0.3", "[1, 2]",
                                                    "\xff\xfe", QByteArray(100000, '[')}) {
        writeFile(path, content);
        auto store = open();
        EXPECT_FALSE(store.value("soundVolume"));
        store.setValue("soundVolume", 0.5);
        store.flush();
        EXPECT_EQ(open().real("soundVolume"), 0.5);
        ASSERT_TRUE(QFile::exists(aside));
        EXPECT_EQ(contents(aside), content);
        QFile::remove(aside);
    }
    writeFile(path, "not json");
    writeFile(aside, "an earlier one");
    auto store = open();
    store.setValue("flag", true);
    store.flush();
    EXPECT_EQ(store.boolean("flag"), true);
    EXPECT_EQ(contents(path), "not json");
    EXPECT_EQ(contents(aside), "an earlier one");
}

TEST_F(FileKeyValueStoreTest, WhatCannotBeReadIsLeftAlone)
{
    // A folder opens for nobody, whoever runs the test.
    ASSERT_TRUE(QDir().mkpath(path));
    auto store = open();
    store.setValue("flag", true);
    store.flush();
    EXPECT_EQ(store.boolean("flag"), true);
    const QDir around(folder.filePath("support"));
    EXPECT_EQ(around.entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList("settings.json"));
    EXPECT_TRUE(around.entryList(QDir::Files).isEmpty());
}

TEST_F(FileKeyValueStoreTest, AFullDiskLeavesTheOldValuesAndTheNextChangeTakesAllAlong)
{
    auto store = open();
    store.setValue("flag", true);
    store.flush();
    {
        const FileSizeLimit full(30);
        store.setValue("text", QString(1000, QChar('x')));
        store.flush();
    }
    EXPECT_EQ(open().boolean("flag"), true);
    store.setValue("other", true);
    store.flush();
    EXPECT_TRUE(open().value("text"));
}

TEST_F(FileKeyValueStoreTest, ForeignMembersSurviveAndHarmNothing)
{
    writeFile(path, R"({"later": {"a": [1, null]}, "bytes": {"base64": "%%%"}, "nothing": null})");
    auto store = open();
    EXPECT_FALSE(store.value("later"));
    EXPECT_FALSE(store.bytes("bytes"));
    EXPECT_FALSE(store.value("nothing"));
    store.setValue("flag", true);
    store.flush();
    EXPECT_TRUE(contents(path).contains("\"later\""));
}

} // namespace
