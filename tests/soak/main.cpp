// Mixed load on the real program: events, permission requests with every end, relays that are
// killed, a wandering pointer, a setting that is switched. Fails when something grows or an agent
// does not get its due.
//
//   tools/stage build/release/tests/soak/soak [MINUTES [SEED]]      30 minutes by default

#include "EventLoad.h"
#include "Requests.h"
#include "Samples.h"

#include "common/Row.h"
#include "e2e/kit/AccessibleTree.h"
#include "e2e/kit/Desktop.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace tirlo::e2e;
using namespace tirlo::soak;

namespace {

constexpr int secondsPerMinute = 60;

/// A user who moves about, opens and closes the island and switches the sound.
class User
{
public:
    User(const Program &program, unsigned seed)
        : m_program(program)
        , m_random(seed)
    {
    }

    void doSomething()
    {
        switch (m_random() % 6) {
        case 0:
            clickAt(screenMiddle(), 10);
            break;
        case 1:
            QProcess::execute("xdotool", {"key", "Escape"});
            break;
        case 2:
            switchSound();
            break;
        default:
            wander();
        }
    }

    [[nodiscard]] int switches() const { return m_switches; }

private:
    void wander()
    {
        constexpr int steps = 8;
        for (int step = 0; step < steps; ++step) {
            movePointer(screenMiddle() - 380 + int(m_random() % 760), int(m_random() % 200));
            waitUntil([] { return false; }, 60);
        }
    }

    void switchSound()
    {
        for (const char *name : {"Mute", "Unmute"}) {
            if (const auto button = findNode(m_program.processId(), "push button", name)) {
                clickAt(button->x + button->width / 2, button->y + button->height / 2);
                ++m_switches;
                return;
            }
        }
    }

    const Program &m_program;
    std::mt19937 m_random;
    int m_switches = 0;
};

/// An event through a real relay that is killed at any moment of its short life.
void killARelay(const Program &program, std::mt19937 &random)
{
    const Agent agent(program.hookScript(), "killed", "/src/lighthouse", "heron");
    const auto run = agent.start("PreToolUse", {{"tool_name", "Read"}});
    waitUntil([] { return false; }, int(random() % 70));
    if (run->isRunning())
        run->kill();
}

bool verdict(const char *what, bool good)
{
    std::printf("%s: %s\n", what, good ? "yes" : "NO");
    return good;
}

bool isWhole(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && QJsonDocument::fromJson(file.readAll()).isObject();
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    const int minutes = argc > 1 ? std::clamp(std::atoi(argv[1]), 1, 240) : 30;
    const unsigned seed = argc > 2 ? unsigned(std::strtoul(argv[2], nullptr, 10)) : 1;
    if (!isVirtualDesktop()) {
        std::fputs("This moves the pointer: run it through tools/stage.\n", stderr);
        return 1;
    }
    Program program(TIRLO_PROGRAM);
    if (!program.isReady())
        return 1;

    const QString support = program.home() + "/Library/Application Support/Skerry";
    EventLoad load(support + "/qv.sock", seed);
    Requests requests(program, support + "/qv.sock", seed + 1);
    User user(program, seed + 2);
    std::mt19937 random(seed + 3);

    // A short run has its samples closer together, so that its thirds have some too.
    const int sampleSeconds = std::max(5, std::min(secondsPerMinute, minutes * 2));
    // Two minutes without any other request, which would supersede it.
    const int runOutAt = minutes * secondsPerMinute / 2;
    bool ranOut = minutes < 6;
    std::vector<Sample> samples;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < qint64(minutes) * secondsPerMinute * 1000 && program.isRunning()) {
        const double seconds = double(clock.elapsed()) / 1000;
        if (seconds >= double(samples.size() * std::size_t(sampleSeconds))) {
            samples.push_back(takeSample(program, seconds / secondsPerMinute));
            std::fprintf(stderr, "%.1f min, %zu faults\n", samples.back().minute,
                         requests.faults().size());
        }
        if (!ranOut && seconds > runOutAt) {
            ranOut = true;
            requests.letOneRunOut();
        }
        requests.makeOne();
        user.doSomething();
        killARelay(program, random);
    }
    load.stop();
    const double ran = double(clock.elapsed()) / 1000;
    // The relays that are gone and the notes that show have a moment to go.
    waitUntil([] { return false; }, 8000);
    samples.push_back(takeSample(program, double(clock.elapsed()) / 1000 / secondsPerMinute));
    const bool survives = program.isRunning();
    const bool endsInOrder = survives && program.stop();

    printSamples(samples);
    const std::vector<double> &replies = load.replySeconds();
    const std::vector<double> &answers = requests.answerSeconds();
    std::printf("\nSeed %u. %zu events, %.0f a second; replies: median %.2f ms, 99.9 %% %.2f ms, "
                "last %.2f ms.\n",
                seed, replies.size(), double(replies.size()) / ran, median(replies) * 1000,
                percentile(replies, 0.999) * 1000, percentile(replies, 1) * 1000);
    if (!answers.empty())
        std::printf("Relays ended %.0f ms (median), %.0f ms (last) after the click; %d clicks "
                    "missed; the sound was switched %d times.\n",
                    median(answers) * 1000, percentile(answers, 1) * 1000,
                    requests.clicksThatMissed(), user.switches());
    for (const auto &[end, count] : requests.ends())
        std::printf("Requests %s: %d\n", end.c_str(), count);
    for (const std::string &fault : requests.faults())
        std::printf("FAULT: %s\n", fault.c_str());

    bool good = areFlat(samples);
    good &= verdict("every event got its reply", load.unanswered() == 0);
    good &= verdict("999 of 1000 replies within 0.3 s", percentile(replies, 0.999) <= 0.3);
    good &= verdict("every request came to its end", requests.faults().empty());
    good &= verdict("the settings are whole", isWhole(support + "/settings.json"));
    good &= verdict("the program ran to the end and ended in order", endsInOrder);
    return good ? 0 : 1;
}
