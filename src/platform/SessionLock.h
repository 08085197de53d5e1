#pragma once

#include <QObject>

namespace tirlo {

/// Whether the user's session is locked, so that nothing may be shown to whoever stands before it.
class SessionLock : public QObject
{
    Q_OBJECT

public:
    [[nodiscard]] virtual bool isLocked() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace tirlo
