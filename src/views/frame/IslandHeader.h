#pragma once

#include "ui/motion/Animated.h"
#include "ui/motion/FrameClock.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

#include <QWidget>

namespace tirlo {

class IconButton;
class PresenceEffect;

/// The row at the island's top: tabs at the left, settings and sound at the right of the notch.
class IslandHeader final : public QWidget
{
    Q_OBJECT

public:
    static constexpr int rowHeight = 34;

    explicit IslandHeader(const ViewContext &context, QWidget *parent = nullptr);

private:
    void layOut(const ViewContext &context);
    void followView();
    void updateSettings();
    void updateSound();
    void showAt(double time);

    AppState &m_state;
    FrameClock &m_clock;
    IconButton *m_settings;
    IconButton *m_sound;
    PresenceEffect *m_presence;
    Animated<double> m_opacity;
    FrameClock::Subscription m_frames;
    Observers m_observers;
};

} // namespace tirlo
