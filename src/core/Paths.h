#pragma once

#include <QString>

namespace tirlo {

struct AgentDefinition;

/// All places under the user's home directory that the program writes to, built in one place.
class Paths
{
public:
    /// Paths under this home directory.
    explicit Paths(QString home);

    /// Paths under the present user's home: `HOME`, else what the user database says.
    ///
    /// A home whose name is no text is reached through a descriptor of it, which stays open, by a
    /// path that this process alone understands.
    [[nodiscard]] static Paths ofUser();

    [[nodiscard]] QString home() const { return m_home; }
    /// Holds the socket, the relay scripts and the settings; mode 0700.
    [[nodiscard]] QString supportFolder() const;
    [[nodiscard]] QString socketPath() const;
    /// Where the program takes commands from other starts of it; as long as that of the agents'
    /// socket, so that there is either both or neither.
    [[nodiscard]] QString commandSocketPath() const;
    /// Locked by the one program that runs this home.
    [[nodiscard]] QString lockPath() const;
    /// The shell wrapper that every hook entry points at.
    [[nodiscard]] QString hookScriptPath() const;
    /// The same as one word of a shell's command line, whatever the home is called.
    [[nodiscard]] QString hookScriptWord() const;
    /// The same for the user to read.
    [[nodiscard]] QString hookScriptShown() const;
    /// The relay proper, beside the wrapper.
    [[nodiscard]] QString relayScriptPath() const;
    [[nodiscard]] QString settingsPath() const;
    /// The secrets, where the desktop has no keyring for them.
    [[nodiscard]] QString secretsPath() const;
    /// The agent's own settings, which name its hooks; for an agent that has such a file.
    [[nodiscard]] QString agentSettingsPath(const AgentDefinition &agent) const;
    /// Holds all logs; mode 0700, its files 0600.
    [[nodiscard]] QString logFolder() const;

private:
    [[nodiscard]] static QString hookScriptIn(const QString &home);

    QString m_home;
    /// False where `m_home` means nothing to other processes.
    bool m_isNamed = true;
};

} // namespace tirlo
