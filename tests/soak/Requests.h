#pragma once

#include "Events.h"
#include "e2e/kit/Agent.h"
#include "e2e/kit/Desktop.h"
#include "e2e/kit/Program.h"

#include <map>
#include <string>

namespace tirlo::soak {

/// Permission requests through real relays, each brought to one of all its possible ends.
class Requests
{
public:
    Requests(const e2e::Program &program, unsigned seed)
        : m_program(program)
        , m_random(seed)
    {
    }

    /// Makes one request and sees it to its end.
    void makeOne()
    {
        const Asker &asker = anyAsker();
        Run run = ask(asker);
        switch (m_random() % 8) {
        case 0:
        case 1:
            return answer(*run, "Allow", R"("behavior":"allow")");
        case 2:
            return asker.hasAlways ? answer(*run, "Always", R"("updatedPermissions":[)")
                                   : answer(*run, "Allow", R"("behavior":"allow")");
        case 3:
            return answer(*run, "Deny", R"("behavior":"deny")");
        case 4:
        case 5:
            return supersede(std::move(run));
        case 6:
            return settleElsewhere(*run, asker);
        default:
            // At any moment, before the relay has connected as well.
            e2e::rest(int(m_random() % 1200));
            run->kill();
            count("abandoned", true);
        }
    }

    /// Leaves one request without an answer until the program gives up on it.
    void letOneRunOut()
    {
        const Run run = ask(askers[0]);
        QElapsedTimer clock;
        clock.start();
        expectCleanClose(*run, 118000, "ran out");
        if (clock.elapsed() < 112000)
            faults.push_back("a request was closed before its time ran out");
    }

    /// How often each end came to pass, and everything that went otherwise than it should.
    std::map<std::string, int> ends;
    std::vector<std::string> faults;

private:
    using Run = std::unique_ptr<e2e::HookRun>;

    /// An agent the island answers for, in a session that the other load leaves alone.
    struct Asker
    {
        const char *tag;
        const char *bundle;
        const char *session;
        bool hasAlways;
    };
    static constexpr Asker askers[] = {
        {"", "", "ask-editor", true},
        {"codex", "", "ask-codex", false},
        {"", "com.todesktop.230313mzl4w4u92", "ask-cursor", true},
    };

    /// Milliseconds in which the relay has to have its answer.
    static constexpr int promptly = 1000;

    const Asker &anyAsker() { return askers[m_random() % std::size(askers)]; }

    Run ask(const Asker &asker)
    {
        const e2e::Agent sender{m_program.hookScript(), asker.session, "/src/harbour", asker.tag};
        return sender.askFor("Bash", {{"command", QString("make pier-%1").arg(++m_number)}},
                             {{"bundle_id", asker.bundle}});
    }

    void answer(e2e::HookRun &run, const char *button, const char *behaviour)
    {
        for (int attempt = 0; attempt < 5 && run.isRunning(); ++attempt) {
            // From elsewhere: the click waits for the pointer to move, in vain where it is already.
            e2e::movePointer(e2e::screenMiddle(), 20);
            if (m_program.clickButton(button))
                static_cast<void>(e2e::waitUntil([&] { return !run.isRunning(); }, promptly));
        }
        count(button, !run.isRunning() && run.exitCode() == 0 && run.output().contains(behaviour));
    }

    void supersede(Run older)
    {
        if (!m_program.waitForButton("Deny"))
            return count("superseded", false);
        e2e::rest(int(m_random() % 400));
        const Run newer = ask(anyAsker());
        // Its own relay has to start first.
        expectCleanClose(*older, 2 * promptly, "superseded");
        e2e::rest(int(m_random() % 300));
        answer(*newer, "Deny", R"("behavior":"deny")");
    }

    void settleElsewhere(e2e::HookRun &run, const Asker &asker)
    {
        if (!m_program.waitForButton("Deny"))
            return count("settled elsewhere", false);
        const QByteArray stop = eventLine("Stop", asker.tag, asker.session, asker.bundle);
        static_cast<void>(Peer::connectedTo(m_program.socketPath()).send(stop).receiveAll());
        expectCleanClose(run, promptly, "settled elsewhere");
    }

    void expectCleanClose(e2e::HookRun &run, int milliseconds, const char *what)
    {
        const bool ended = e2e::waitUntil([&] { return !run.isRunning(); }, milliseconds);
        count(what, ended && run.exitCode() == 0 && run.output().isEmpty());
    }

    void count(const char *end, bool isGood)
    {
        ++ends[end];
        if (!isGood)
            faults.push_back("request " + std::to_string(m_number) + " was not " + end);
    }

    const e2e::Program &m_program;
    std::mt19937 m_random;
    int m_number = 0;
};

} // namespace tirlo::soak
