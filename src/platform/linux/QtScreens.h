#pragma once

#include "XcbPanels.h"

#include "platform/MainQueue.h"
#include "platform/Screens.h"

#include <QString>

class QScreen;

namespace tirlo {

/// The screens that Qt reports, with the panels that the desktop has on them and the notch that the
/// kernel reports for the built-in one.
class QtScreens final : public Screens
{
    Q_OBJECT

public:
    /// Stack and queue outlive the screens; `systemRoot` is the folder that /sys and /proc lie in.
    QtScreens(const XcbStack &stack, MainQueue &queue, const QString &systemRoot = QString());

    [[nodiscard]] std::vector<ScreenInfo> all() const override { return m_all; }
    [[nodiscard]] std::optional<ScreenInfo> main() const override;
    [[nodiscard]] double statusBarThickness() const override;

private:
    void follow(const QScreen &screen);
    void tell();
    bool read();
    [[nodiscard]] ScreenInfo info(const QScreen &screen) const;

    MainQueue &m_queue;
    WorkItem m_telling;
    WorkItem m_settling;
    std::vector<ScreenInfo> m_all;
    XcbPanels m_panels;
    /// In device pixels; 0 without a notch.
    int m_notchHeight;
};

} // namespace tirlo
