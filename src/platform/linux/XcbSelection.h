#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

namespace tirlo {

/// Tells who owns a selection of the default screen, by which a desktop's part makes itself known.
class XcbSelection : public QObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// `name` lacks the screen's number, as "_NET_SYSTEM_TRAY_S" does; `ownedWithoutX` is what to
    /// believe where there is no X server.
    XcbSelection(const QByteArray &name, bool ownedWithoutX);

    [[nodiscard]] bool isOwned() const { return m_isOwned; }

Q_SIGNALS:
    /// It has got an owner, or has none any more.
    void changed(bool isOwned);

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void setOwned(bool isOwned);

    bool m_isOwned;
    xcb_atom_t m_selection = XCB_NONE;
    std::uint8_t m_selectionEvent = 0;
};

} // namespace tirlo
