#pragma once

#include "HookInstaller.h"

#include <QByteArray>

#include <optional>

namespace tirlo {

/// The installer for Claude Code, which replaces a broken settings file and keeps it as a backup.
class ClaudeHooks final : public HookInstaller
{
public:
    ClaudeHooks(const Paths &paths, const MainQueue &clock);

    /// The bytes of the file with our hooks, for review; writeHooks() is to write just these.
    [[nodiscard]] QByteArray buildHooksData();

    /// Writes what was built last, if it is still to be written; throws a HookError when it can't,
    /// and may then be tried again.
    ///
    /// Makes a backup first if it can.
    void writeHooks();

    /// Drops what was built.
    void cancel() { m_pendingHooksData.reset(); }

    /// Takes our hooks out at once; throws a HookError when the file can't be written.
    void uninstallHooks();

    /// True when the hook for permission requests is one of ours that gives up too early.
    [[nodiscard]] bool hooksNeedUpdate() const;

protected:
    [[nodiscard]] bool holdsHooks(const JsonObject &settings) const override;

private:
    std::optional<QByteArray> m_pendingHooksData;
};

} // namespace tirlo
