#pragma once

#include "platform/BackgroundWorker.h"

#include <QHash>
#include <QList>
#include <QNetworkProxy>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

namespace tirlo {

class MainQueue;

/// The desktop's proxy for each server, asked for in the background and kept for a few minutes.
///
/// The desktop may have to fetch and run a script to tell, which takes seconds. It belongs to the
/// main thread.
class DesktopProxy
{
public:
    explicit DesktopProxy(MainQueue &queue);

    /// Calls `then` once known() can tell of the server: at once, or later if it must be asked for.
    void find(const QUrl &url, const QObject *owner, std::function<void()> then);

    /// What was last found for the server; no proxy for one on this machine.
    [[nodiscard]] QList<QNetworkProxy> known(const QNetworkProxyQuery &query) const;

private:
    struct Answer
    {
        QList<QNetworkProxy> proxies;
        double time;
    };

    MainQueue &m_queue;
    QHash<QString, Answer> m_answers;
    QObject m_life;
    BackgroundWorker m_worker;
};

} // namespace tirlo
