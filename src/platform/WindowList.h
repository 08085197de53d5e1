#pragma once

#include "Applications.h"

#include <QObject>

namespace tirlo {

/// The windows on the desktop, as far as the window manager tells of them.
class WindowList : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    /// Another application than before has come to the front; it may be this program itself.
    void applicationActivated(const tirlo::RunningApplication &application);
};

} // namespace tirlo
