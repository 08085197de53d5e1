#include "core/AppLog.h"

#include "support/FileSizeLimit.h"
#include "support/ManualQueue.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

const QString format = QStringLiteral("yyyy-MM-dd HH:mm:ss");

class AppLogTest : public testing::Test
{
protected:
    QTemporaryDir home;
    ManualQueue queue;
    Paths paths{home.path()};
    AppLog log{paths, queue};
    QString path = paths.logFolder() + "/qv.log";

    QByteArray content()
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void fill(qint64 size)
    {
        QDir().mkpath(paths.logFolder());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(size, 'x'));
    }
};

TEST_F(AppLogTest, ALineStaysOneLineWhateverIsInIt)
{
    log.appendAppLog("qv.log", "a\nb\r\x1b[31m\x7f" + QString(QChar(0)) + " é 🎈 \u0085", format);
    log.appendAppLog("qv.log", "second", format);
    EXPECT_EQ(content(),
              QByteArray("2026-03-14 09:26:53 a\\u000Ab\\u000D\\u001B[31m\\u007F\\u0000 "
                         "é 🎈 \u0085\n2026-03-14 09:26:53 second\n"));
}

TEST_F(AppLogTest, FolderAndFileAreTheOwnersAlone)
{
    QDir().mkpath(paths.logFolder());
    QFile::setPermissions(paths.logFolder(), QFileDevice::Permissions(0x7777));
    log.appendAppLog("qv.log", "first", format);
    EXPECT_EQ(QFile::permissions(paths.logFolder()) & 0x0077, 0);
    EXPECT_EQ(QFile::permissions(path) & 0x0177, 0);
    QFile::setPermissions(path, QFileDevice::Permissions(0x6666));
    log.appendAppLog("qv.log", "second", format);
    EXPECT_EQ(QFile::permissions(path) & 0x0177, 0);
}

TEST_F(AppLogTest, AFullFileIsStartedAnewAndOneByteLessIsNot)
{
    fill(1048575);
    log.appendAppLog("qv.log", "line", format);
    EXPECT_EQ(content().size(), 1048575 + 25);

    fill(1048576);
    log.appendAppLog("qv.log", "line", format);
    EXPECT_EQ(content(), "2026-03-14 09:26:53 line\n");
}

TEST_F(AppLogTest, WhatCannotBeWrittenIsGivenUpSilently)
{
    QFile blocker(home.filePath("Library"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    log.appendAppLog("qv.log", "line", format);
    EXPECT_FALSE(QFile::exists(path));

    blocker.remove();
    {
        const FileSizeLimit fullDisk(10);
        log.appendAppLog("qv.log", "new", format);
    }
    EXPECT_FALSE(QFile::exists(path)) << "the full disk took a part";
    log.appendAppLog("qv.log", "first", format);
    {
        const FileSizeLimit fullDisk(content().size() + 10);
        log.appendAppLog("qv.log", "second", format);
    }
    log.appendAppLog("qv.log", "third", format);
    EXPECT_EQ(content(), "2026-03-14 09:26:53 first\n2026-03-14 09:26:53 third\n");
}

TEST_F(AppLogTest, ALinkInTheLogsPlaceIsNotFollowed)
{
    QDir().mkpath(paths.logFolder());
    const QString victim = home.filePath("victim");
    QFile file(victim);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("untouched");
    file.close();
    ASSERT_TRUE(QFile::link(victim, path));

    log.appendAppLog("qv.log", "line", format);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "untouched");
    EXPECT_EQ(content(), "2026-03-14 09:26:53 line\n");
}

TEST_F(AppLogTest, ALogComesBackAfterItsFolderHasGone)
{
    log.appendAppLog("qv.log", "first", format);
    ASSERT_TRUE(QDir(paths.logFolder()).removeRecursively());
    log.appendAppLog("qv.log", "second", format);
    EXPECT_EQ(content(), "2026-03-14 09:26:53 second\n");
    EXPECT_EQ(QFile::permissions(paths.logFolder()) & 0x0077, 0);
}

} // namespace
