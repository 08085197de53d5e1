#pragma once

#include "platform/HttpClient.h"

#include <QPointer>

#include <vector>

namespace tirlo {

/// An HTTP client whose requests wait until the test answers them.
class FakeHttpClient final : public HttpClient
{
public:
    void send(const HttpRequest &request, const QObject *owner,
              std::function<void(const HttpReply &)> done) override
    {
        requests.push_back(request);
        m_pending.push_back({owner != nullptr, owner, std::move(done)});
    }

    /// Answers the oldest request that waits; false without one.
    bool answer(const HttpReply &reply)
    {
        if (m_pending.empty())
            return false;
        const Pending pending = std::move(m_pending.front());
        m_pending.erase(m_pending.begin());
        if (!pending.hasOwner || pending.owner)
            pending.done(reply);
        return true;
    }

    /// Every request so far.
    std::vector<HttpRequest> requests;

private:
    struct Pending
    {
        bool hasOwner;
        QPointer<const QObject> owner;
        std::function<void(const HttpReply &)> done;
    };

    std::vector<Pending> m_pending;
};

} // namespace tirlo
