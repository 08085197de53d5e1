#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

namespace tirlo {

/// Tells whether a compositing manager blends windows, so that a see-through pixel is seen through.
///
/// It follows the selection that such a manager owns; without X blending is taken for granted.
class XcbCompositor final : public QObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    XcbCompositor();

    [[nodiscard]] bool isRunning() const { return m_isRunning; }

Q_SIGNALS:
    /// Blending has begun or ended.
    void changed(bool isRunning);

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void setRunning(bool isRunning);

    bool m_isRunning = true;
    xcb_atom_t m_selection = XCB_NONE;
    std::uint8_t m_selectionEvent = 0;
};

} // namespace tirlo
