#pragma once

#include <QObject>
#include <QRectF>

class QWindow;

namespace tirlo {

/// Does for a window what a window manager does for others: the island's has none.
///
/// The windows given have a native one.
class PanelWindow : public QObject
{
    Q_OBJECT

public:
    /// What may lie over the window.
    enum class Cover {
        /// Windows of applications.
        windows,
        /// Those, and menus, tool tips and whatever else no window manager looks after.
        anything,
    };

    /// Whether something of that kind, not of this program, lies over the part, in points relative
    /// to the window.
    [[nodiscard]] virtual bool isCovered(const QWindow &window, const QRectF &part,
                                         Cover cover) const = 0;

    /// Puts the window above all others.
    virtual void raise(QWindow &window) = 0;

    /// Gives the window, if it is shown, the keyboard and remembers who had it.
    virtual void takeKeyboard(QWindow &window) = 0;

    /// Gives the keyboard, if the window still has it, back to who had it before; false when there
    /// is nobody any more.
    virtual bool returnKeyboard(QWindow &window) = 0;

Q_SIGNALS:
    /// Windows have come, gone or moved: isCovered() may say something else.
    void orderChanged();
};

} // namespace tirlo
