#pragma once

#include "GuardedHooks.h"

namespace tirlo {

/// The installer for an agent in whose file all that is ours stands in one block of its own.
class BlockHooks final : public GuardedHooks
{
public:
    using GuardedHooks::GuardedHooks;

protected:
    [[nodiscard]] JsonObject withHooks(JsonObject settings) const override;
    [[nodiscard]] JsonObject withoutHooks(JsonObject settings) const override;
    [[nodiscard]] bool holdsHooks(const JsonObject &settings) const override;
};

} // namespace tirlo
