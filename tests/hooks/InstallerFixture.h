#pragma once

#include "core/Paths.h"
#include "hooks/installers/HookError.h"
#include "hooks/installers/HookInstallers.h"
#include "support/Files.h"
#include "support/ManualQueue.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tirlo {

using namespace Qt::StringLiterals;

/// What a failing operation tells the user; "" when it does not fail.
template<typename Operation>
std::string messageOf(Operation operation)
{
    try {
        operation();
    } catch (const HookError &error) {
        return error.message().toStdString();
    }
    return {};
}

/// The installers in a home of their own, whose name gives shells and patterns something to chew.
struct InstallerFixture : testing::Test
{
    static QJsonValue json(const QByteArray &text)
    {
        return QJsonDocument::fromJson(text).object();
    }

    /// The names of all that lies beside the file.
    static QStringList besides(const QString &path)
    {
        const QFileInfo file(path);
        QStringList names = file.dir().entryList(QDir::AllEntries | QDir::System | QDir::Hidden
                                                 | QDir::NoDotAndDotDot);
        names.removeAll(file.fileName());
        return names;
    }

    QTemporaryDir home{QDir::tempPath() + uR"(/tirlo it's "my" $HOME `ü` \ XXXXXX)"_s};
    Paths paths{home.path()};
    ManualQueue queue;
    HookInstallers installers{paths, queue};
    ClaudeHooks &claude = installers.claude;
    GuardedHooks &gemini = *installers.guarded.at(0);
    GuardedHooks &antigravity = *installers.guarded.at(1);
    GuardedHooks &codex = *installers.guarded.at(2);
    const QString claudePath = home.filePath(u".claude/settings.json"_s);
    const QString geminiPath = home.filePath(u".gemini/settings.json"_s);
    const QString antigravityPath = home.filePath(u".gemini/config/hooks.json"_s);
    const QString codexPath = home.filePath(u".codex/hooks.json"_s);
};

} // namespace tirlo
