// Mixed load on the real program: events, permission requests with every end, relays that are
// killed, a wandering pointer, a setting that is switched. Fails when something grows or an agent
// does not get its due.
//
//   tools/stage build/release/tests/soak/soak [MINUTES [SEED]]          30 minutes by default

#include "Requests.h"
#include "Samples.h"
#include "common/LoadClient.h"

#include <QGuiApplication>

#include <cstdlib>
#include <thread>

using namespace tirlo::e2e;
using namespace tirlo::soak;

namespace {

/// A user who moves about, opens and closes the island and switches the sound.
void doSomething(const Program &program, std::mt19937 &random)
{
    switch (random() % 6) {
    case 0:
        return clickAt(screenMiddle(), 10);
    case 1:
        QProcess::execute("xdotool", {"key", "Escape"});
        return;
    case 2:
        for (const char *name : {"Mute", "Unmute"}) {
            if (const auto button = program.button(name))
                return clickAt(button->place.center().x(), button->place.center().y());
        }
        return;
    default:
        for (int step = 0; step < 8; ++step) {
            movePointer(screenMiddle() - 380 + int(random() % 760), int(random() % 200));
            rest(60);
        }
    }
}

/// An event through a real relay that is killed at any moment of its short life.
void killARelay(const Program &program, std::mt19937 &random)
{
    const Agent agent{program.hookScript(), "killed", "/src/lighthouse", "heron"};
    const auto run = agent.start("PreToolUse", {{"tool_name", "Read"}});
    rest(int(random() % 70));
}

bool verdict(const char *what, bool good)
{
    std::printf("%s: %s\n", what, good ? "yes" : "NO");
    return good;
}

bool runMixedLoad(Program &program, int minutes, unsigned seed)
{
    // For as long as the rest takes.
    const tirlo::Load load{.eventsPerSecond = 200,
                           .seconds = (minutes + 10) * 60,
                           .lineOf = [seed](int number) { return busyLine(seed, number); }};
    std::vector<qint64> replies;
    std::jthread agents([&](const std::stop_token &stop) {
        replies = runLoadClient(program.socketPath(), load, stop);
    });
    Requests requests(program, seed + 1);
    std::mt19937 random(seed + 2);

    // A short run has its samples closer together, so that its thirds have some too.
    const double sampleMinutes = std::min(1.0, minutes / 30.0);
    // Two minutes without any other request, which would supersede it.
    bool ranOut = minutes < 6;
    std::vector<Sample> samples;
    QElapsedTimer clock;
    clock.start();
    const auto now = [&clock] { return double(clock.elapsed()) / 60000; };
    while (now() < minutes && program.isRunning()) {
        if (now() >= double(samples.size()) * sampleMinutes)
            samples.push_back(takeSample(program, now()));
        if (!ranOut && now() > minutes / 2.0) {
            ranOut = true;
            requests.letOneRunOut();
        }
        requests.makeOne();
        doSomething(program, random);
        killARelay(program, random);
    }
    agents.request_stop();
    agents.join();
    // The relays that are gone and the notes that show have a moment to go.
    rest(8000);
    samples.push_back(takeSample(program, now()));
    const bool endedInOrder = program.isRunning() && program.stop();

    for (const auto &[end, count] : requests.ends)
        std::printf("Requests %s: %d\n", end.c_str(), count);
    for (const std::string &fault : requests.faults)
        std::printf("FAULT: %s\n", fault.c_str());
    const auto late = std::ranges::count_if(replies, [](qint64 taken) { return taken > 300'000; });
    std::printf("%zu events, %td late replies. Seed %u.\n", replies.size(), late, seed);
    QFile settings(program.supportFolder() + "/settings.json");
    bool good = areFlat(samples);
    good &= verdict("every request came to its end", requests.faults.empty());
    good &= verdict("every event got its reply", std::ranges::count(replies, -1) == 0);
    good &= verdict("999 of 1000 replies within 0.3 s", std::size_t(late) * 1000 <= replies.size());
    good &= verdict("the settings are whole",
                    settings.open(QIODevice::ReadOnly)
                        && QJsonDocument::fromJson(settings.readAll()).isObject());
    good &= verdict("the program ran to the end and ended in order", endedInOrder);
    return good;
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    if (!isVirtualDesktop()) {
        std::fputs("This moves the pointer: run it through tools/stage.\n", stderr);
        return 1;
    }
    const auto number = [&](int index, unsigned otherwise) {
        return argc > index ? unsigned(std::strtoul(argv[index], nullptr, 10)) : otherwise;
    };
    Program program(TIRLO_PROGRAM);
    const int minutes = int(std::clamp(number(1, 30), 1U, 240U));
    return program.isReady() && runMixedLoad(program, minutes, number(2, 1)) ? 0 : 1;
}
