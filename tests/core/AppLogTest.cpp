#include "support/FileSizeLimit.h"
#include "support/HomeParts.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

class AppLogTest : public testing::Test, protected HomeParts
{
protected:
    QString path = paths.logFolder() + "/qv.log";

    QByteArray content()
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void append(const QString &line)
    {
        log.appendAppLog("qv.log", line, "yyyy-MM-dd HH:mm:ss");
        log.flush();
    }
};

TEST_F(AppLogTest, ALineStaysOneLineWhateverIsInIt)
{
    append("a\nb\r\x1b[31m\x7f" + QString(QChar(0)) + " é 🎈 \u0085");
    append("second");
    EXPECT_EQ(content(),
              QByteArray("2026-03-14 09:26:53 a\\u000Ab\\u000D\\u001B[31m\\u007F\\u0000 "
                         "é 🎈 \u0085\n2026-03-14 09:26:53 second\n"));
}

TEST_F(AppLogTest, FolderAndFileAreTheOwnersAlone)
{
    QDir().mkpath(paths.logFolder());
    QFile::setPermissions(paths.logFolder(), QFileDevice::Permissions(0x7777));
    append("first");
    EXPECT_EQ(QFile::permissions(paths.logFolder()) & 0x0077, 0);
    EXPECT_EQ(QFile::permissions(path) & 0x0177, 0);
    QFile::setPermissions(path, QFileDevice::Permissions(0x6666));
    append("second");
    EXPECT_EQ(QFile::permissions(path) & 0x0177, 0);
    // So they are once a log has come back after its folder had gone.
    ASSERT_TRUE(QDir(paths.logFolder()).removeRecursively());
    append("third");
    EXPECT_EQ(content(), "2026-03-14 09:26:53 third\n");
    EXPECT_EQ(QFile::permissions(paths.logFolder()) & 0x0077, 0);
}

TEST_F(AppLogTest, AFullFileIsStartedAnewAndOneByteLessIsNot)
{
    append("");
    ASSERT_TRUE(QFile::resize(path, 1048575));
    append("line");
    EXPECT_EQ(content().size(), 1048575 + 25);
    ASSERT_TRUE(QFile::resize(path, 1048576));
    append("line");
    EXPECT_EQ(content(), "2026-03-14 09:26:53 line\n");
}

TEST_F(AppLogTest, WhatCannotBeWrittenIsGivenUpSilently)
{
    QFile blocker(home.filePath("Library"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    append("line");
    EXPECT_FALSE(QFile::exists(path));

    blocker.remove();
    {
        const FileSizeLimit fullDisk(10);
        append("new");
    }
    EXPECT_FALSE(QFile::exists(path)) << "the full disk took a part";
    append("first");
    {
        const FileSizeLimit fullDisk(content().size() + 10);
        append("second");
    }
    append("third");
    EXPECT_EQ(content(), "2026-03-14 09:26:53 first\n2026-03-14 09:26:53 third\n");
}

} // namespace
