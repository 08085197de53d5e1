#pragma once

#include "AgentFile.h"
#include "HookTables.h"

#include <vector>

namespace tirlo {

class MainQueue;
class Paths;

/// Puts the hook script into the settings file of one agent, and takes it out again.
///
/// This is what the installers of all agents share; everything belongs to the main thread.
class HookInstaller
{
public:
    virtual ~HookInstaller() = default;

    /// True when the agent's file holds hooks of ours; false when it can't be read.
    [[nodiscard]] bool hooksInstalled() const;

    /// The file as it stands, laid out as a preview is, so that only real changes differ.
    ///
    /// A file that holds no JSON object comes as it is, a missing one as "".
    [[nodiscard]] QString presentText() const;

    /// True when writing changes the order or the layout of what else the file holds.
    [[nodiscard]] bool laysOutAnew() const;

    /// The path as the user writes it, such as "~/.codex/hooks.json".
    [[nodiscard]] QString label() const { return m_file.label(); }

protected:
    /// The installer for the file; the clock outlives it.
    HookInstaller(const AgentFile &file, std::vector<HookGroup> groups, JsonSlashes slashes,
                  const MainQueue &clock);

    /// Whether the settings of the agent hold hooks of ours.
    [[nodiscard]] virtual bool holdsHooks(const JsonObject &settings) const = 0;

    [[nodiscard]] const AgentFile &file() const { return m_file; }
    [[nodiscard]] const std::vector<HookGroup> &groups() const { return m_groups; }
    /// The settings as the bytes of a file.
    [[nodiscard]] QByteArray serialised(const JsonObject &settings) const;
    /// The present time for the name of a backup.
    [[nodiscard]] QString stamp(const QString &format) const;

private:
    AgentFile m_file;
    std::vector<HookGroup> m_groups;
    JsonSlashes m_slashes;
    const MainQueue &m_clock;
};

} // namespace tirlo
