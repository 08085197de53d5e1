#include "Requests.h"

#include "EventLoad.h"
#include "e2e/kit/AccessibleTree.h"
#include "e2e/kit/Desktop.h"
#include "hooks/Peer.h"

#include <QElapsedTimer>

#include <optional>
#include <utility>

using namespace tirlo::e2e;

namespace tirlo::soak {

namespace {

/// The agents the island answers for, each in a session that the other load leaves alone.
struct Asker
{
    const char *tag;
    const char *bundle;
    const char *session;
};
constexpr std::array askers{
    Asker{"", "", "ask-editor"},
    Asker{"codex", "", "ask-codex"},
    Asker{"", "com.todesktop.230313mzl4w4u92", "ask-cursor"},
};

/// The relay has to have its answer within a second.
constexpr int promptly = 1000;

void rest(int milliseconds)
{
    waitUntil([] { return false; }, milliseconds);
}

} // namespace

Requests::Requests(const Program &program, QString socketPath, unsigned seed)
    : m_program(program)
    , m_socketPath(std::move(socketPath))
    , m_random(seed)
{
}

void Requests::makeOne()
{
    const std::size_t agent = m_random() % askers.size();
    Run run = ask(agent);
    switch (m_random() % 8) {
    case 0:
    case 1:
        answer(*run, "Allow", R"("behavior":"allow")");
        break;
    case 2:
        // Codex has no such answer.
        if (agent == 1)
            answer(*run, "Allow", R"("behavior":"allow")");
        else
            answer(*run, "Always", R"("updatedPermissions":[)");
        break;
    case 3:
        answer(*run, "Deny", R"("behavior":"deny")");
        break;
    case 4:
    case 5:
        supersede(std::move(run), agent);
        break;
    case 6:
        settleElsewhere(*run, agent);
        break;
    default:
        // At any moment, before the relay has connected as well.
        rest(int(m_random() % 1200));
        run->kill();
        count("abandoned", true);
    }
}

void Requests::allowOne()
{
    const Run run = ask(m_random() % askers.size());
    answer(*run, "Allow", R"("behavior":"allow")");
}

void Requests::letOneRunOut()
{
    const Run run = ask(0);
    QElapsedTimer clock;
    clock.start();
    constexpr int cardTime = 115000;
    constexpr int slack = 3000;
    expectCleanClose(*run, cardTime + slack, "ran out");
    if (clock.elapsed() < cardTime - slack)
        m_faults.push_back("a request was closed before its time ran out");
}

Requests::Run Requests::ask(std::size_t agent)
{
    const Asker &asker = askers[agent];
    const Agent sender(m_program.hookScript(), asker.session, "/src/harbour", asker.tag);
    return sender.askFor("Bash", {{"command", QString("make pier-%1").arg(++m_number)}},
                         {{"bundle_id", asker.bundle}});
}

void Requests::answer(HookRun &run, const char *button, const char *behaviour)
{
    constexpr int attempts = 5;
    for (int attempt = 0; attempt < attempts && run.isRunning(); ++attempt) {
        QElapsedTimer clock;
        if (!click(button))
            continue;
        clock.start();
        if (waitUntil([&] { return !run.isRunning(); }, promptly))
            m_answerSeconds.push_back(double(clock.nsecsElapsed()) * 1e-9);
        else
            ++m_clicksThatMissed;
    }
    count(button, !run.isRunning() && run.exitCode() == 0 && run.output().contains(behaviour));
}

/// The pointer waits nowhere: a button still moves while the island opens.
bool Requests::click(const char *button)
{
    std::optional<AccessibleNode> last;
    const bool rests = waitUntil([&] {
        const auto now = findNode(m_program.processId(), "push button", button);
        const bool same = now && last && now->x == last->x && now->y == last->y;
        last = now;
        if (!same)
            rest(120);
        return same;
    });
    if (!rests)
        return false;
    const int x = last->x + last->width / 2;
    const int y = last->y + last->height / 2;
    // From elsewhere: the tool waits for the pointer to move, in vain where it is there already.
    movePointer(x, y + 60);
    clickAt(x, y);
    return true;
}

bool Requests::waitForCard() const
{
    return waitUntil(
        [&] { return findNode(m_program.processId(), "push button", "Deny").has_value(); });
}

void Requests::supersede(Run older, std::size_t agent)
{
    if (!waitForCard()) {
        count("superseded", false);
        return;
    }
    rest(int(m_random() % 400));
    const Run newer = ask((agent + m_random() % askers.size()) % askers.size());
    // Its own relay has to start first.
    expectCleanClose(*older, 2 * promptly, "superseded");
    rest(int(m_random() % 300));
    answer(*newer, "Deny", R"("behavior":"deny")");
}

void Requests::settleElsewhere(HookRun &run, std::size_t agent)
{
    if (!waitForCard()) {
        count("settled elsewhere", false);
        return;
    }
    const Asker &asker = askers[agent];
    const QByteArray stop = eventLine("Stop", asker.tag, asker.session, asker.bundle);
    static_cast<void>(Peer::connectedTo(m_socketPath).send(stop).receiveAll());
    expectCleanClose(run, promptly, "settled elsewhere");
}

void Requests::expectCleanClose(HookRun &run, int milliseconds, const char *what)
{
    const bool ended = waitUntil([&] { return !run.isRunning(); }, milliseconds);
    count(what, ended && run.exitCode() == 0 && run.output().isEmpty());
}

void Requests::count(const char *end, bool isGood)
{
    ++m_ends[end];
    if (!isGood)
        m_faults.push_back("request " + std::to_string(m_number) + " was not " + end);
}

} // namespace tirlo::soak
