#pragma once

#include "platform/Pointer.h"

namespace tirlo {

/// A pointer that is where a test puts it.
class FakePointer final : public Pointer
{
public:
    [[nodiscard]] QPointF position() const override { return at; }

    [[nodiscard]] bool seesWholeDesktop() const override { return isSeenEverywhere; }

    QPointF at;
    bool isSeenEverywhere = true;
};

} // namespace tirlo
