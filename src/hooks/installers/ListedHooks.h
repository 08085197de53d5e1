#pragma once

#include "GuardedHooks.h"

namespace tirlo {

/// The installer for an agent that lists hooks by event under "hooks", beside those of others.
class ListedHooks final : public GuardedHooks
{
public:
    [[nodiscard]] static ListedHooks gemini(const Paths &paths, const MainQueue &clock);
    [[nodiscard]] static ListedHooks codex(const Paths &paths, const MainQueue &clock);

protected:
    [[nodiscard]] JsonObject withHooks(JsonObject settings) const override;
    [[nodiscard]] JsonObject withoutHooks(JsonObject settings) const override;
    [[nodiscard]] bool holdsHooks(const JsonObject &settings) const override;

private:
    using GuardedHooks::GuardedHooks;

    /// The object under "hooks", empty if there is none; throws a HookError if it is no object.
    [[nodiscard]] JsonObject hooksOf(const JsonObject &settings) const;
    [[noreturn]] void throwUnexpectedType(const QString &member) const;
};

} // namespace tirlo
