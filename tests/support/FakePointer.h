#pragma once

#include "platform/Pointer.h"

namespace tirlo {

/// A pointer that is where a test puts it.
class FakePointer final : public Pointer
{
public:
    [[nodiscard]] QPointF position() const override { return at; }

    QPointF at;
};

} // namespace tirlo
