#pragma once

#include "platform/MainQueue.h"
#include "ui/Observers.h"

#include <QWidget>

namespace tirlo {

class AppState;

/// A line at the island's lower edge that runs out before the island may close by itself.
///
/// It only shows the time, and closes nothing. It wakes ten times a second while the line is seen,
/// once before that as the line comes to be seen, and not at all once it has run out.
class CountdownBar final : public QWidget
{
    Q_OBJECT

public:
    static constexpr QSize fullSize{160, 2};

    CountdownBar(AppState &state, MainQueue &queue, QWidget *parent = nullptr);

    /// In points, 0 while the line doesn't show.
    [[nodiscard]] double barWidth() const { return m_barWidth; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void updateBar();
    void show(double barWidth);

    AppState &m_state;
    MainQueue &m_queue;
    double m_barWidth = 0;
    WorkItem m_next;
    Observers m_observers;
};

} // namespace tirlo
