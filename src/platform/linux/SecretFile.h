#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace tirlo {

/// Secrets in one file, mode 0600, replaced atomically on each change.
///
/// An entry without a text stands for one that was removed here and may still be in a keyring. A
/// file that does not parse, or is far too long, is set aside as `<name>.corrupt`; where even that
/// fails, and where the file can't be read, it is left alone and changes hold for this run only.
class SecretFile
{
public:
    using Entries = QMap<QString, std::optional<QString>>;

    /// Reads the file at `path`; a missing one has no entries.
    explicit SecretFile(QString path);

    [[nodiscard]] const Entries &entries() const { return m_entries; }

    void set(const QString &key, const std::optional<QString> &value);
    /// Drops the entries; the file goes with the last one.
    void forget(const QStringList &keys);

private:
    void load();
    void save() const;

    QString m_path;
    Entries m_entries;
    bool m_mayWrite = true;
};

} // namespace tirlo
