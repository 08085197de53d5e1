// Mixed load on the real program: events, permission requests with every end, relays that are
// killed, a wandering pointer, a setting that is switched. Fails when something grows or an agent
// does not get its due.
//
//   tools/stage build/release/tests/soak/soak [MINUTES [SEED]]          30 minutes by default
//   tools/stage build/release/tests/soak/soak --approvals [COUNT]       1,000 in a row by default

#include "Requests.h"
#include "Samples.h"

#include "common/Row.h"

#include <QGuiApplication>

#include <cstdlib>
#include <cstring>

using namespace tirlo::e2e;
using namespace tirlo::soak;

namespace {

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
        for (int step = 0; step < 8; ++step) {
            movePointer(screenMiddle() - 380 + int(m_random() % 760), int(m_random() % 200));
            rest(60);
        }
    }

    void switchSound()
    {
        for (const char *name : {"Mute", "Unmute"}) {
            if (const auto button = m_program.button(name)) {
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
    rest(int(random() % 70));
}

bool verdict(const char *what, bool good)
{
    std::printf("%s: %s\n", what, good ? "yes" : "NO");
    return good;
}

/// Prints what every run ends with; false when the program did not stand it.
bool finish(Program &program, const std::vector<Sample> &samples, const Requests &requests)
{
    const bool endedInOrder = program.isRunning() && program.stop();
    printSamples(samples);
    const std::vector<double> &answers = requests.answerSeconds();
    if (!answers.empty())
        std::printf("Relays ended %.0f ms (median), %.0f ms (last) after the click; %d clicks "
                    "missed.\n",
                    median(answers) * 1000, percentile(answers, 1) * 1000,
                    requests.clicksThatMissed());
    for (const auto &[end, count] : requests.ends())
        std::printf("Requests %s: %d\n", end.c_str(), count);
    for (const std::string &fault : requests.faults())
        std::printf("FAULT: %s\n", fault.c_str());
    bool good = areFlat(samples);
    good &= verdict("every request came to its end", requests.faults().empty());
    good &= verdict("the program ran to the end and ended in order", endedInOrder);
    return good;
}

double minutesOf(const QElapsedTimer &clock)
{
    return double(clock.elapsed()) / 60000;
}

bool runMixedLoad(Program &program, int minutes, unsigned seed)
{
    EventLoad load(program.socketPath(), seed);
    Requests requests(program, seed + 1);
    User user(program, seed + 2);
    std::mt19937 random(seed + 3);

    // A short run has its samples closer together, so that its thirds have some too.
    const double sampleMinutes = std::min(1.0, minutes / 30.0);
    // Two minutes without any other request, which would supersede it.
    bool ranOut = minutes < 6;
    std::vector<Sample> samples;
    QElapsedTimer clock;
    clock.start();
    while (minutesOf(clock) < minutes && program.isRunning()) {
        const double now = minutesOf(clock);
        if (now >= double(samples.size()) * sampleMinutes) {
            samples.push_back(takeSample(program, now));
            std::fprintf(stderr, "%.1f min, %zu faults\n", now, requests.faults().size());
        }
        if (!ranOut && now > minutes / 2.0) {
            ranOut = true;
            requests.letOneRunOut();
        }
        requests.makeOne();
        user.doSomething();
        killARelay(program, random);
    }
    load.stop();
    const double seconds = minutesOf(clock) * 60;
    // The relays that are gone and the notes that show have a moment to go.
    rest(8000);
    samples.push_back(takeSample(program, minutesOf(clock)));

    bool good = finish(program, samples, requests);
    const std::vector<double> &replies = load.replySeconds();
    const double slowest = percentile(replies, 0.999);
    std::printf("\n%zu events, %.0f a second; replies: median %.2f ms, 99.9 %% %.2f ms, last "
                "%.2f ms.\n",
                replies.size(), double(replies.size()) / seconds, median(replies) * 1000,
                slowest * 1000, percentile(replies, 1) * 1000);
    std::printf("Seed %u; the sound was switched %d times.\n", seed, user.switches());
    good &= verdict("every event got its reply", load.unanswered() == 0);
    good &= verdict("999 of 1000 replies within 0.3 s", slowest <= 0.3);
    QFile settings(program.supportFolder() + "/settings.json");
    good &= verdict("the settings are whole",
                    settings.open(QIODevice::ReadOnly)
                        && QJsonDocument::fromJson(settings.readAll()).isObject());
    return good;
}

bool runApprovals(Program &program, int count)
{
    Requests requests(program, 1);
    std::vector<Sample> samples;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < count && program.isRunning(); ++i) {
        requests.allowOne();
        if (i % std::max(1, count / 30) == 0)
            samples.push_back(takeSample(program, minutesOf(clock)));
    }
    return finish(program, samples, requests);
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
    if (!program.isReady())
        return 1;

    if (argc > 1 && std::strcmp(argv[1], "--approvals") == 0)
        return runApprovals(program, int(std::min(number(2, 1000), 100000U))) ? 0 : 1;
    const int minutes = int(std::clamp(number(1, 30), 1U, 240U));
    return runMixedLoad(program, minutes, number(2, 1)) ? 0 : 1;
}
