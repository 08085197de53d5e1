#pragma once

#include "e2e/kit/Agent.h"
#include "e2e/kit/Program.h"

#include <QString>

#include <array>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace tirlo::soak {

/// Permission requests through real relays, each brought to one of all its possible ends.
class Requests
{
public:
    Requests(const e2e::Program &program, QString socketPath, unsigned seed);

    /// Makes one request and sees it to its end.
    void makeOne();

    /// Makes one request and clicks on its "Allow".
    void allowOne();

    /// Leaves one request without an answer until the program gives up on it.
    void letOneRunOut();

    /// How often each end came to pass, and everything that went otherwise than it should.
    [[nodiscard]] const std::map<std::string, int> &ends() const { return m_ends; }
    [[nodiscard]] const std::vector<std::string> &faults() const { return m_faults; }
    /// From the click on the answer to the end of the relay.
    [[nodiscard]] const std::vector<double> &answerSeconds() const { return m_answerSeconds; }
    [[nodiscard]] int clicksThatMissed() const { return m_clicksThatMissed; }

private:
    using Run = std::unique_ptr<e2e::HookRun>;

    [[nodiscard]] Run ask(std::size_t agent);
    void answer(e2e::HookRun &run, const char *button, const char *behaviour);
    void supersede(Run older, std::size_t agent);
    void settleElsewhere(e2e::HookRun &run, std::size_t agent);
    bool click(const char *button);
    [[nodiscard]] bool waitForCard() const;
    void expectCleanClose(e2e::HookRun &run, int milliseconds, const char *what);
    void count(const char *end, bool isGood);

    const e2e::Program &m_program;
    const QString m_socketPath;
    std::mt19937 m_random;
    int m_number = 0;
    std::map<std::string, int> m_ends;
    std::vector<std::string> m_faults;
    std::vector<double> m_answerSeconds;
    int m_clicksThatMissed = 0;
};

} // namespace tirlo::soak
