#pragma once

#include "X11.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRect>

namespace tirlo {

/// The room that the desktop's panels have reserved at the top of the screens.
///
/// Panels that are windows say so themselves; for those that are part of the window manager the
/// area that it leaves to windows has to do. Without X there are none.
class XcbPanels final : public QObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    XcbPanels();

    /// How many device pixels a panel takes at the top centre of that screen, whose place is in
    /// device pixels, too; 0 without one.
    ///
    /// What would take more than a third of the screen is no panel. Not every window manager tells
    /// which screen has it: then it is the main one.
    [[nodiscard]] int depthAt(const QRect &screen, bool isMain) const;

Q_SIGNALS:
    /// A panel may have come, gone or changed.
    void changed();

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    [[nodiscard]] int reservedByWindows(const QRect &screen) const;
    [[nodiscard]] int leftByWindowManager(const QRect &screen, bool isMain) const;

    X11 m_x11;
    xcb_atom_t m_clients = XCB_NONE;
    xcb_atom_t m_partialStrut = XCB_NONE;
    xcb_atom_t m_strut = XCB_NONE;
    xcb_atom_t m_currentDesktop = XCB_NONE;
    xcb_atom_t m_workArea = XCB_NONE;
};

} // namespace tirlo
