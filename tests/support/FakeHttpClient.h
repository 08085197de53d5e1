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

    /// Answers a request that waits, the oldest unless told otherwise; false without one.
    bool answer(const HttpReply &reply, std::size_t index = 0)
    {
        if (index >= m_pending.size())
            return false;
        const Pending pending = std::move(m_pending[index]);
        m_pending.erase(m_pending.begin() + std::ptrdiff_t(index));
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
