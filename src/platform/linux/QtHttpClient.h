#pragma once

#include "DesktopProxy.h"
#include "platform/BackgroundWorker.h"
#include "platform/HttpClient.h"

#include <memory>

class QNetworkAccessManager;

namespace tirlo {

class MainQueue;

/// Web requests on Qt's network, through the desktop's proxy where it has one.
///
/// The network is set up at the first request. Destroying the client gives up, in silence, what is
/// under way. No cookie and no cached answer is kept between requests.
class QtHttpClient final : public HttpClient
{
public:
    explicit QtHttpClient(MainQueue &queue);
    ~QtHttpClient() override;

    void send(const HttpRequest &request, const QObject *owner,
              std::function<void(const HttpReply &)> done) override;

private:
    QNetworkAccessManager &network();

    MainQueue &m_queue;
    DesktopProxy m_proxy;
    BackgroundWorker m_unpacker;
    std::unique_ptr<QNetworkAccessManager> m_network;
};

} // namespace tirlo
