#pragma once

#include "HookInstaller.h"

namespace tirlo {

/// The installer for Claude Code, which replaces a broken settings file and keeps it as a backup.
class ClaudeHooks final : public HookInstaller
{
public:
    ClaudeHooks(const Paths &paths, const MainQueue &clock);

    /// The change that puts our hooks in; writeHooks() is to write just this.
    ///
    /// Throws a HookError when there is a file that can't be read.
    [[nodiscard]] HookChange buildHooksData();

    /// Takes our hooks out at once; throws a HookError when the file can't be written.
    void uninstallHooks();

    /// True when the hook for permission requests is one of ours that gives up too early.
    [[nodiscard]] bool hooksNeedUpdate() const;

protected:
    [[nodiscard]] bool holdsHooks(const JsonObject &settings) const override;
    [[nodiscard]] QString backUp(const QByteArray &previewed) const override;
};

} // namespace tirlo
