#pragma once

#include "AgentFile.h"
#include "HookTables.h"

#include <optional>
#include <vector>

namespace tirlo {

class MainQueue;
class Paths;

/// A change of a settings file, for review.
struct HookChange
{
    /// What the file would hold.
    QString text;
    /// The file as it stands, laid out as `text` is, so that only real changes differ.
    ///
    /// A file that holds no JSON object comes as it is, a missing one as "".
    QString presentText;
    /// True when writing changes the order or the layout of what else the file holds.
    bool laysOutAnew = false;
};

/// Puts the hook script into the settings file of one agent, and takes it out again.
///
/// This is what the installers of all agents share; everything belongs to the main thread.
class HookInstaller
{
public:
    virtual ~HookInstaller() = default;

    /// True when the agent's file holds hooks of ours; false when it can't be read.
    [[nodiscard]] bool hooksInstalled() const;

    /// Writes what was previewed last, if it is still to be written, after making a backup.
    ///
    /// Throws a HookError, with the file as it is, when that fails, and may then be tried again.
    void writeHooks();

    /// Drops what was previewed.
    void cancel() { m_pending.reset(); }

    [[nodiscard]] const AgentDefinition &agent() const
    {
        return AgentCatalog::definition(m_table.agent);
    }

    /// The path as the user writes it, such as "~/.codex/hooks.json".
    [[nodiscard]] QString label() const { return m_file.label(); }

protected:
    /// The installer of the table's hooks in its agent's file; table and clock outlive it.
    HookInstaller(const Paths &paths, const HookTable &table, JsonSlashes slashes,
                  const MainQueue &clock);

    /// Whether the settings of the agent hold hooks of ours.
    [[nodiscard]] virtual bool holdsHooks(const JsonObject &settings) const = 0;

    /// Keeps the file's content before it is replaced, if there is a file.
    ///
    /// `previewed` is the fingerprint of the bytes that the preview found. Returns the path of the
    /// backup made, "" for none; throws a HookError when the content is not to be replaced.
    [[nodiscard]] virtual QString backUp(const QByteArray &previewed) const = 0;

    /// Keeps the settings as what is to be written in the place of `present`, and tells the change.
    [[nodiscard]] HookChange keepPending(const AgentFile::Contents &present,
                                         const JsonObject &settings);

    [[nodiscard]] const AgentFile &file() const { return m_file; }
    [[nodiscard]] std::vector<HookGroup> groups() const;
    /// What tells the content of a file from any other.
    [[nodiscard]] static QByteArray fingerprintOf(const QByteArray &bytes);
    /// The settings as the bytes of a file.
    [[nodiscard]] QByteArray serialised(const JsonObject &settings) const;
    /// The present time for the name of a backup.
    [[nodiscard]] QString stamp(const QString &format) const;

private:
    struct Pending
    {
        QByteArray data;
        /// Of the bytes that the preview found.
        QByteArray fingerprint;
    };

    AgentFile m_file;
    const HookTable &m_table;
    const QString m_scriptWord;
    const JsonSlashes m_slashes;
    const MainQueue &m_clock;
    std::optional<Pending> m_pending;
};

} // namespace tirlo
