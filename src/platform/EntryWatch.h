#pragma once

#include "FileDescriptor.h"

#include <QByteArray>
#include <QString>

namespace tirlo {

/// Tells when the file at a path comes, goes or is replaced, or when a folder above it does.
///
/// Nothing wakes in between: the system tells it through a descriptor.
class EntryWatch
{
public:
    explicit EntryWatch(QString path);

    /// Watches from now on the folders that are there now.
    void renew();

    /// Turns readable when something has happened; negative where the system can't watch.
    [[nodiscard]] int descriptor() const { return m_events.get(); }

    /// Takes what has happened since; true if some of it may be about the file.
    [[nodiscard]] bool takeChange();

private:
    const QString m_path;
    FileDescriptor m_events;
    /// Of the folder whose entries count.
    int m_entries = -1;
    /// The entry of that folder on the way to the file.
    QByteArray m_name;
};

} // namespace tirlo
