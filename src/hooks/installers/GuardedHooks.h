#pragma once

#include "HookInstaller.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tirlo {

/// An installer that never touches a file it doesn't understand, or one changed since the preview.
class GuardedHooks : public HookInstaller
{
public:
    /// What the file would hold with our hooks, or without; writeHooks() is to write just that.
    ///
    /// Throws a HookError when the file is not understood, or there is none to remove hooks from.
    [[nodiscard]] QString previewHooks(bool install);

    /// Writes what was previewed last, if it is still to be written, after making a backup.
    ///
    /// Throws a HookError, with the file as it is, when that fails or the file is not what it was.
    void writeHooks();

    /// Drops what was previewed.
    void cancel() { m_pending.reset(); }

protected:
    /// `name` is the agent's in messages.
    GuardedHooks(QString name, const AgentFile &file, std::vector<HookGroup> groups,
                 const MainQueue &clock);

    /// The settings with our hooks; throws a HookError when they are not understood.
    [[nodiscard]] virtual JsonObject withHooks(JsonObject settings) const = 0;
    /// The settings without our hooks; throws a HookError when they are not understood.
    [[nodiscard]] virtual JsonObject withoutHooks(JsonObject settings) const = 0;

private:
    struct Pending
    {
        QByteArray data;
        QByteArray fingerprint;
    };

    const QString m_name;
    std::optional<Pending> m_pending;
};

} // namespace tirlo
