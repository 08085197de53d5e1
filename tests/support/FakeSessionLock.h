#pragma once

#include "platform/SessionLock.h"

namespace tirlo {

/// A session that a test locks.
class FakeSessionLock final : public SessionLock
{
public:
    [[nodiscard]] bool isLocked() const override { return m_isLocked; }

    void setLocked(bool isLocked)
    {
        m_isLocked = isLocked;
        Q_EMIT changed();
    }

private:
    bool m_isLocked = false;
};

} // namespace tirlo
