#pragma once

#include "platform/Pointer.h"

namespace tirlo {

/// The pointer as Qt reads it: one question to the X server.
class QtPointer final : public Pointer
{
public:
    [[nodiscard]] QPointF position() const override;
    [[nodiscard]] bool seesWholeDesktop() const override;
};

} // namespace tirlo
