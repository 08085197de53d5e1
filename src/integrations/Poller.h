#pragma once

#include "PollerContext.h"
#include "platform/BackgroundWorker.h"
#include "platform/HttpClient.h"
#include "platform/MainQueue.h"

#include <QObject>

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

    /// Runs one cycle now; without the service's key nothing happens.
    virtual void poll() = 0;

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

    /// Sends the request and hands what `parse` makes of a whole answer of status 200 to `accept`.
    ///
    /// `parse` takes the body and is pure: a long body is read off the main thread. Any other
    /// outcome goes to `fail`, if there is one.
    template<typename Parse, typename Accept>
    void fetch(const HttpRequest &request, Parse parse, Accept accept,
               std::function<void(const HttpReply &)> fail = {})
    {
        m_context.http.send(request, &m_life, [=, this](const HttpReply &reply) {
            if (reply.status != 200 || !reply.error.isEmpty()) {
                if (fail)
                    fail(reply);
                return;
            }
            handOver(reply.body.size(), [body = reply.body, parse, accept] {
                return [parsed = parse(body), accept] { accept(parsed); };
            });
        });
    }

    const PollerContext m_context;
    /// The owner of what is delayed.
    const QObject m_life;

private:
    using Acceptance = std::function<void()>;

    void scheduleCycle(double deadline, double slack);
    /// Calls on the main thread what `read` returns, which itself runs elsewhere if it takes long.
    void handOver(qsizetype bodySize, std::function<Acceptance()> read);

    const Schedule m_schedule;
    WorkItem m_timer;
    // Goes first, when it has done its work.
    BackgroundWorker m_reader;
};

} // namespace tirlo
