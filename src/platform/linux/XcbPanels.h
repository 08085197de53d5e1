#pragma once

#include "XcbStack.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRect>

#include <vector>

namespace tirlo {

/// The room that the desktop's panels have reserved at the top of the screens.
///
/// Panels that are windows say so themselves; for those that are part of the window manager the
/// area that it leaves to windows has to do. Without X there are none.
class XcbPanels final : public QObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// The stack outlives the panels.
    explicit XcbPanels(const XcbStack &stack);

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
    /// What a window reserves at the desktop's upper edge, in device pixels, both ends included.
    struct Reserved
    {
        int depth = 0;
        int left = 0;
        int right = 0;

        bool operator==(const Reserved &) const = default;
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void look();
    [[nodiscard]] std::vector<Reserved> readReserved() const;
    [[nodiscard]] int reservedByWindows(const QRect &screen) const;
    [[nodiscard]] int leftByWindowManager(const QRect &screen, bool isMain) const;

    const XcbStack &m_stack;
    std::vector<Reserved> m_reserved;
    xcb_atom_t m_partialStrut = XCB_NONE;
    xcb_atom_t m_strut = XCB_NONE;
    xcb_atom_t m_currentDesktop = XCB_NONE;
    xcb_atom_t m_workArea = XCB_NONE;
};

} // namespace tirlo
