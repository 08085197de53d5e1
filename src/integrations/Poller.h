#pragma once

#include "PollerContext.h"
#include "ServiceAnswers.h"
#include "platform/BackgroundWorker.h"
#include "platform/HttpClient.h"
#include "platform/MainQueue.h"

#include <QObject>
#include <QProperty>

#include <functional>
#include <optional>
#include <utility>

namespace tirlo {

/// Asks one web service for news again and again, from start() on for as long as it lives.
///
/// A failed cycle is not repeated: the next one simply tries again. It belongs to the main thread.
class Poller
{
public:
    Poller(const Poller &) = delete;
    Poller &operator=(const Poller &) = delete;
    virtual ~Poller() = default;

    /// Begins the cycles once the keys are loaded; nothing happens when they have begun already.
    void start();

    /// Begins the cycles anew if the machine has slept since the last one.
    void wake();

    /// Runs one cycle now; without the service's key nothing happens.
    void poll();

protected:
    /// When the cycles run; in seconds.
    struct Schedule
    {
        double firstAfterStart;
        double interval;
    };

    Poller(const PollerContext &context, Schedule schedule);

    /// The user's key, read anew; nothing while it is absent or empty.
    [[nodiscard]] std::optional<QString> key(QLatin1String item) const;

    /// Which answers are of use.
    enum class Wanted {
        /// None that belongs to an older cycle than one that has come already.
        newest,
        all,
    };

    /// Asks the service for its news.
    virtual void runCycle() = 0;

    /// Sends the request and hands what `parse` makes of a whole answer of status 200 to `accept`.
    ///
    /// `parse` takes the body and is pure: a long body is read off the main thread. Where it
    /// returns an optional, nothing happens if that is empty. Any other outcome goes to `fail`, if
    /// there is one.
    template<typename Parse, typename Accept>
    void fetch(const HttpRequest &request, Parse parse, Accept accept,
               const std::function<void(const HttpReply &)> &fail = {},
               Wanted wanted = Wanted::newest)
    {
        const auto read = [parse, accept](const QByteArray &body) -> Acceptance {
            const auto parsed = parse(body);
            if constexpr (requires { accept(*parsed); }) {
                if (!parsed)
                    return {};
                return [parsed, accept] { accept(*parsed); };
            } else {
                return [parsed, accept] { accept(parsed); };
            }
        };
        send(request, read, fail, wanted);
    }

    /// Fetches a list that the store keeps beside whether it came once and why it doesn't come.
    template<typename Item, typename Parse>
    void fetchList(const HttpRequest &request, Parse parse, QProperty<QList<Item>> &list,
                   QProperty<bool> &isLoaded, QProperty<std::optional<QString>> &error)
    {
        const auto accept = [&](const QList<Item> &parsed) {
            error = std::nullopt;
            list = parsed;
            isLoaded = true;
        };
        fetch(request, parse, accept,
              [&error](const HttpReply &reply) { error = failureText(reply); });
    }

    const PollerContext m_context;
    /// The owner of what is delayed.
    const QObject m_life;

private:
    /// Does what an answer calls for; empty if it calls for nothing.
    using Acceptance = std::function<void()>;
    using Reading = std::function<Acceptance(const QByteArray &)>;

    void scheduleCycle(double deadline, double slack);
    void send(const HttpRequest &request, const Reading &read,
              const std::function<void(const HttpReply &)> &fail, Wanted wanted);

    const Schedule m_schedule;
    WorkItem m_timer;
    /// The machine's time asleep when the timer was set.
    double m_timeAsleep = 0;
    int m_cycle = 0;
    /// The last cycle of which an answer has come.
    int m_answeredCycle = 0;
    // Goes first, when it has done its work.
    BackgroundWorker m_reader;
};

} // namespace tirlo
