#pragma once

#include "platform/ProcessWatch.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace tirlo {

/// Where a hook comes from, as its payload says; what is absent or of another type has a default.
struct HookOrigin
{
    /// Of a session that has no name.
    static constexpr QLatin1String unknownSession{"unknown"};

    /// unknownSession by default.
    QString sessionId;
    QString cwd;
    /// Shown name of the project, from the working directory; "Session" by default.
    QString projectName;
    /// The relay's agent tag as it came.
    QString agentTag;
    QString terminal;
    /// Bundle identifier of the host application.
    QString bundle;
    /// The agent's process; none from a relay that does not tell.
    std::optional<ProcessId> process;
    /// Path of the record that the agent keeps of the session; "" by default.
    QString transcript;

    /// Reads the payload of an event or a permission request.
    [[nodiscard]] static HookOrigin of(const QJsonObject &payload);
};

/// The pill that a hook belongs to.
struct HookRoute
{
    QString pillId;
    /// The validated name of an agent from outside the catalogue's road; none for a built-in pill.
    std::optional<QString> externalAgent;
    /// What the user calls the place in which the agent asks by itself.
    QString place;

    [[nodiscard]] bool isExternal() const { return externalAgent.has_value(); }
};

/// The pill of the origin; none for a plain terminal, whose sessions are ignored by design unless
/// the user has every terminal taken in.
[[nodiscard]] std::optional<HookRoute> routeOf(const HookOrigin &origin, bool anyTerminal = false);

/// The tag if it is a fit agent name: 1 to 24 of a to z, 0 to 9 and "-", and not "claude".
[[nodiscard]] std::optional<QString> validateAgent(const QString &tag);

/// The proper spelling of a project that goes by several, any other name unchanged.
[[nodiscard]] QString aliasProjectName(const QString &name);

} // namespace tirlo
