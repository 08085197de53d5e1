#pragma once

#include "GuardedHooks.h"

namespace tirlo {

/// The installer for an agent that lists hooks by event under "hooks", beside those of others.
class ListedHooks final : public GuardedHooks
{
public:
    using GuardedHooks::GuardedHooks;

protected:
    [[nodiscard]] JsonObject withHooks(JsonObject settings) const override;
    [[nodiscard]] JsonObject withoutHooks(JsonObject settings) const override;
    [[nodiscard]] bool holdsHooks(const JsonObject &settings) const override;

private:
    /// The object under "hooks", empty if there is none; throws a HookError if it is no object.
    [[nodiscard]] JsonObject hooksOf(const JsonObject &settings) const;
    [[noreturn]] void throwUnexpectedType(const QString &member) const;
};

} // namespace tirlo
