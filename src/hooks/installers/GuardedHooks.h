#pragma once

#include "HookInstaller.h"

namespace tirlo {

/// An installer that never touches a file it doesn't understand, or one changed since the preview.
class GuardedHooks : public HookInstaller
{
public:
    /// The installer of the table's hooks; table and clock outlive it.
    GuardedHooks(const Paths &paths, const HookTable &table, const MainQueue &clock);

    /// The change that puts our hooks in, or takes them out; writeHooks() is to write just this.
    ///
    /// Throws a HookError when the file is not understood, or there is none to remove hooks from.
    [[nodiscard]] HookChange previewHooks(bool install);

protected:
    [[nodiscard]] QString backUp(const QByteArray &previewed) const override;

    /// The settings with our hooks; throws a HookError when they are not understood.
    [[nodiscard]] virtual JsonObject withHooks(JsonObject settings) const = 0;
    /// The settings without our hooks; throws a HookError when they are not understood.
    [[nodiscard]] virtual JsonObject withoutHooks(JsonObject settings) const = 0;
};

} // namespace tirlo
