#include "ChatFixture.h"
#include "support/FakeHttpClient.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/stat.h>

using namespace tirlo;

namespace {

class ChatFiles : public ChatFixture
{
protected:
    /// The file's context, its bytes on disk.
    FileContext file(const QString &name, const QByteArray &bytes)
    {
        QFile written(folder.filePath(name));
        EXPECT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(bytes);
        return {name, QUrl::fromLocalFile(written.fileName())};
    }

    /// The blocks that a new conversation begins with when it is about the file.
    QJsonArray blocksFor(const FileContext &context)
    {
        service.emplace(state, notifications, island, keychain, http, queue, hosts);
        ask("What is this?", context);
        EXPECT_EQ(note(), "");
        return messages(ChatProvider::anthropic).first().toObject()["content"].toArray();
    }

    QTemporaryDir folder;
};

TEST_F(ChatFiles, AFileGoesFirstInTheFormOfItsExtension)
{
    const QByteArray bytes = QByteArray("\0\xff\x80 any bytes", 13);
    const std::array<QByteArray, 3> rows[]
        = {{"a.PDF", "document", "application/pdf"}, {"a.jpg", "image", "image/jpeg"},
           {"a.Jpeg", "image", "image/jpeg"},        {"a.png", "image", "image/png"},
           {"a.gif", "image", "image/gif"},          {"a.b.webp", "image", "image/webp"}};
    for (const auto &[name, type, mediaType] : rows) {
        const QJsonArray blocks = blocksFor(file(name, bytes));
        ASSERT_EQ(blocks.size(), 3);
        const QJsonObject source{{"type", "base64"},
                                 {"media_type", QString(mediaType)},
                                 {"data", QString(bytes.toBase64())}};
        EXPECT_EQ(blocks[0], (QJsonObject{{"type", QString(type)}, {"source", source}}));
        EXPECT_EQ(blocks[1].toObject()["text"], "File: " + QString(name));
        EXPECT_EQ(blocks[2].toObject()["text"], "What is this?");
    }
}

TEST_F(ChatFiles, AnythingElseIsTextIfItIsShortAndReadable)
{
    const QByteArray longest(200'000, 'x');
    const auto textOf = [&](const QString &name, const QByteArray &bytes) {
        const QJsonArray blocks = blocksFor(file(name, bytes));
        EXPECT_EQ(blocks.last().toObject()["text"], "What is this?");
        EXPECT_EQ(blocks.at(blocks.size() - 2).toObject()["text"], "File: " + name);
        return blocks.size() == 3 ? blocks.first().toObject()["text"].toString() : QString();
    };
    EXPECT_EQ(textOf("a.txt", "Grüße\n"), "File contents:\nGrüße\n");
    EXPECT_EQ(textOf("Makefile", ""), "File contents:\n");
    EXPECT_EQ(textOf("a.txt", longest), "File contents:\n" + longest);
    EXPECT_EQ(textOf("a.txt", longest + "x"), "");
    EXPECT_EQ(textOf("a.bin", "\xff\xfe"), "");
    EXPECT_EQ(textOf("a.txt", "cut off \xe2\x82"), "");
}

TEST_F(ChatFiles, OfAFileThatCannotBeReadTheNameIsSent)
{
    const QString pipe = folder.filePath("pipe.png");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QList<std::optional<QUrl>> urls{std::nullopt, QUrl("https://example.org/a.png")};
    for (const QString &path : {folder.filePath("none.png"), folder.path(), pipe})
        urls.append(QUrl::fromLocalFile(path));
    for (const auto &url : urls) {
        const QJsonArray blocks = blocksFor({"it.png", url});
        ASSERT_EQ(blocks.size(), 2);
        EXPECT_EQ(blocks[0].toObject()["text"], "File: it.png");
    }
}

TEST_F(ChatFiles, AFileIsReadOnce)
{
    const FileContext context = file("a.png", "picture");
    const QJsonArray blocks = blocksFor(context);
    ASSERT_TRUE(QFile::remove(context.fileURL->toLocalFile()));
    ask("And now?");
    EXPECT_EQ(messages(ChatProvider::anthropic).first().toObject()["content"].toArray().first(),
              blocks.first());
}

TEST_F(ChatFiles, ALargePictureIsSentWithoutHoldingUpTheMainThread)
{
    constexpr qint64 size = 50 * 1024 * 1024;
    const FileContext context = file("large.png", QByteArray(size, 'x'));
    FakeHttpClient web;
    service.emplace(state, notifications, island, keychain, web, queue, hosts);
    service->chat("What is this?", context);
    int turns = 0;
    QTimer turn;
    turn.callOnTimeout([&] { ++turns; });
    turn.start(0);
    ASSERT_TRUE(waitUntil([&] { return !web.requests.empty(); }));
    EXPECT_GT(turns, 20);
    EXPECT_GT(web.requests.front().body.size(), size / 3 * 4);
}

TEST_F(ChatFiles, OtherProvidersAreToldTheFilesNameOrTheFirstTextOfAnEarlierTurn)
{
    const std::pair<QString, QString> rows[]
        = {{"a.txt", "File contents:\ncontents"}, {"a.png", "File: a.png"}};
    for (const auto &[name, earlier] : rows) {
        state.chatProvider = ChatProvider::anthropic;
        blocksFor(file(name, "contents"));
        state.chatProvider = ChatProvider::openai;
        ask("More?");
        EXPECT_EQ(messages(ChatProvider::openai).first().toObject()["content"], earlier);
        service.emplace(state, notifications, island, keychain, http, queue, hosts);
        ask("What is this?", file(name, "contents"));
        EXPECT_EQ(messages(ChatProvider::openai).first().toObject()["content"],
                  "File: " + name + "\n\nWhat is this?");
    }
}

} // namespace
