#pragma once

#include "Editor.h"
#include "Sight.h"
#include "e2e/kit/Agent.h"
#include "e2e/kit/Program.h"

#include <QList>
#include <QString>

#include <memory>

namespace tirlo {

/// One thing tried on a desktop.
struct Finding
{
    QString what;
    /// What was seen, in a few words.
    QString seen;
    bool isGood = false;
};

/// Uses the island on the desktop as a person does, with an editor's window under it, and keeps a
/// picture of each step.
class Trial
{
public:
    /// The pictures go to that folder, each with the desktop's name.
    Trial(const QString &binary, QString desktop, QString pictures);

    /// Tries everything, in about half a minute; with `waitsForIdle` in two.
    [[nodiscard]] QList<Finding> run(bool waitsForIdle);

private:
    using Request = std::unique_ptr<e2e::HookRun>;

    void start();
    void tryCompact();
    void tryRequest();
    void tryFullScreen();
    void tryWorkspaces();
    void tryHotkey();
    void trySettings();
    void tryScreens();
    void tryIdle();

    [[nodiscard]] Request ask();
    [[nodiscard]] bool press(const std::string &button);
    [[nodiscard]] bool becomes(int width, int milliseconds = 5000) const;
    void fillScreen();
    void foldAway();
    void switchWorkspace(int index) const;
    void add(const QString &what, bool isGood, const QString &seen);
    void addWidth(const QString &what, int expected);
    void keepPicture(const QString &name);

    const QString m_binary;
    const QString m_desktop;
    const QString m_pictures;
    Editor m_editor;
    std::unique_ptr<e2e::Program> m_program;
    e2e::Agent m_agent;
    QList<Finding> m_findings;
    int m_pictureCount = 0;
};

} // namespace tirlo
