#pragma once

#include "core/json/JsonNode.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tirlo {

class Paths;

/// An agent's settings file, which is the user's: read with care, and never left half written.
///
/// Where a link stands in its place, the link stays and what it points at is read and written.
class AgentFile
{
public:
    /// What was found at one reading.
    struct Contents
    {
        /// All bytes; "" when there is no file.
        QByteArray bytes;
        /// The JSON object that they are; none when they are anything else, or there is no file.
        std::optional<JsonObject> object;
    };

    /// The file at this path under the home directory of `paths`.
    AgentFile(const Paths &paths, const QString &path);

    /// The path as the user writes it, such as "~/.codex/hooks.json".
    [[nodiscard]] QString label() const { return m_label; }

    /// True when something stands at the path; a link into nowhere counts as nothing.
    [[nodiscard]] bool exists() const;

    /// All bytes; none when there is no file to read.
    [[nodiscard]] std::optional<QByteArray> read() const;

    /// The JSON object in the file; none when there is no such thing, for whatever reason.
    [[nodiscard]] std::optional<JsonObject> readLeniently() const;

    /// What the file holds; throws a HookError when there is one that can't be read.
    [[nodiscard]] Contents contents() const;

    /// What the file holds; throws a HookError when there is one that is not read as an object.
    [[nodiscard]] Contents strictReadJSONObject() const;

    /// Keeps these bytes, the file's, in "<its name>.bak-<stamp>" beside it.
    ///
    /// Returns the path of the backup, "" when there was just this one already. Throws a HookError
    /// when it can't be made, which includes that other bytes stand there.
    QString backUp(const QByteArray &bytes, const QString &stamp) const;

    /// Replaces the whole content at once, keeping the mode, and makes the folder if need be; what
    /// is new is the owner's alone. Throws a HookError, with the file as it was, when it can't.
    void write(const QByteArray &bytes) const;

private:
    QString m_path;
    QString m_label;
};

} // namespace tirlo
