#pragma once

#include "PortalSettings.h"
#include "XcbSelection.h"

#include <QObject>

namespace tirlo {

/// How the desktop looks and wants its programs to look, as told by its portal, the toolkit and the
/// tray, while it changes.
class DesktopLook final : public QObject
{
    Q_OBJECT

public:
    DesktopLook();

    /// Whether programs are to do without motion.
    [[nodiscard]] bool reducesMotion() const { return m_reducesMotion; }

    /// Whether a light picture is the one to see on the desktop's bar.
    [[nodiscard]] bool hasDarkBar() const { return m_hasDarkBar; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// One of the two has changed.
    void changed();

private:
    void look();

    PortalSettings m_portal;
    XcbSelection m_tray{"_NET_SYSTEM_TRAY_S", false};
    bool m_reducesMotion = false;
    bool m_hasDarkBar = false;
};

} // namespace tirlo
