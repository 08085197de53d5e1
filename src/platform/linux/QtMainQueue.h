#pragma once

#include "platform/MainQueue.h"

#include <QObject>

namespace tirlo {

/// The main queue on Qt's event loop; make it on the main thread.
class QtMainQueue final : public MainQueue
{
public:
    [[nodiscard]] double mediaTime() const override;
    [[nodiscard]] double timeAsleep() const override;
    [[nodiscard]] QDateTime wallClock() const override;
    void post(std::function<void()> work) override;

protected:
    void schedule(double seconds, double slack, std::function<void()> fire) override;

private:
    QObject m_context;
};

} // namespace tirlo
