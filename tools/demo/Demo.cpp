#include "Demo.h"

#include "e2e/kit/AccessibleTree.h"
#include "e2e/kit/Desktop.h"

#include <QDir>
#include <QTextStream>

#include <array>
#include <cstdio>
#include <utility>

namespace tirlo {

namespace {

constexpr int stagePause = 900;
constexpr int personsTime = 20000;
/// Within the closed island, which hangs from the screen's top edge.
constexpr int islandTabY = 10;

bool fail(const char *what)
{
    std::fprintf(stderr, "The demo stopped: %s.\n", what);
    return false;
}

} // namespace

Demo::Demo(const QString &binary, QString pictures)
    : m_program(binary)
    , m_agent{m_program.hookScript(), "demo-session", "/home/you/lighthouse"}
    , m_pictures(std::move(pictures))
{
    QDir().mkpath(m_pictures);
}

bool Demo::play()
{
    if (!m_program.isReady())
        return fail("Tirlo did not start");
    return begin() && runTools() && askPermission() && finish();
}

bool Demo::begin()
{
    if (!m_agent.send("SessionStart"))
        return fail("the hook script failed at the session's start");
    // Opens the island on its overview, so that the pictures show the agent at work.
    if (e2e::isVirtualDesktop())
        e2e::clickAt(e2e::screenMiddle(), islandTabY);
    stage("session-start", "An agent's session starts: its pill takes the project's name.");
    if (!m_agent.send("UserPromptSubmit", {{"prompt", "Make the lamp turn twice as fast"}}))
        return fail("the hook script failed at the prompt");
    stage("prompt", "You ask it for something.");
    return true;
}

bool Demo::runTools()
{
    const std::array<std::pair<QString, QJsonObject>, 4> calls{{
        {"Grep", {{"query", "rotationPeriod"}}},
        {"Read", {{"file_path", "/home/you/lighthouse/lamp.c"}}},
        {"Edit", {{"file_path", "/home/you/lighthouse/lamp.c"}}},
        {"Bash", {{"command", "make test"}}},
    }};
    for (const auto &[tool, input] : calls) {
        if (!m_agent.sendTool(tool, input))
            return fail("the hook script failed at a tool");
        e2e::waitUntil([] { return false; }, stagePause / 3);
    }
    stage("tools", "It searches, reads, edits and tests.");
    return true;
}

bool Demo::askPermission()
{
    const auto request = m_agent.askFor("Bash", {{"command", "make install PREFIX=/usr/local"}});
    const auto asked = [&] { return e2e::showsText(m_program.processId(), "needs permission"); };
    // A person's desktop need not have an accessibility bus; there they see for themselves.
    if (e2e::isVirtualDesktop() && !e2e::waitUntil(asked))
        return fail("the permission card did not open");
    stage("approval", "It asks for a permission: the island opens.");

    if (e2e::isVirtualDesktop()) {
        if (!pressAllow())
            return fail("there is no \"Allow\" to press");
    } else {
        std::puts("Press \"Allow\", \"Always\" or \"Deny\" on the island.");
    }
    if (!request->waitForEnd(personsTime)) {
        request->kill();
        stage("handled-elsewhere", "No answer: the agent was answered elsewhere, the card goes.");
        return true;
    }
    const QByteArray answer = request->output();
    if (answer.isEmpty())
        return fail("the agent got no answer");
    stage("answered", QString("The agent reads: %1").arg(QString::fromUtf8(answer.trimmed())));
    return true;
}

bool Demo::finish()
{
    if (!m_agent.send("Stop", {{"message", "The lamp now turns twice as fast."}}))
        return fail("the hook script failed at the end");
    stage("finished", "It has finished.");
    return true;
}

void Demo::stage(const QString &name, const QString &sentence)
{
    QTextStream(stdout) << sentence << Qt::endl;
    e2e::waitUntil([] { return false; }, stagePause);
    ++m_stages;
    if (!e2e::isVirtualDesktop())
        return;
    e2e::takePicture(QString("%1/%2-%3.png").arg(m_pictures).arg(m_stages).arg(name));
}

bool Demo::pressAllow() const
{
    const auto allow = e2e::findNode(m_program.processId(), "push button", "Allow");
    if (!allow)
        return false;
    // It acts only once it has been seen.
    e2e::rest(1000);
    e2e::clickAt(allow->place.center().x(), allow->place.center().y());
    return true;
}

} // namespace tirlo
