#pragma once

#include <QString>
#include <QStringList>

namespace tirlo {

/// What one application is called by the product and by this desktop.
///
/// Several applications may stand for what the product knows as one.
struct ApplicationNames
{
    QString bundleIdentifier;
    /// The classes of its windows, in lower case.
    QStringList windowClasses;
    /// The ids of its desktop entries, without their ending; the most usual first.
    QStringList desktopEntries;

    /// The application whose windows have the class, in any case; null for an unknown one.
    [[nodiscard]] static const ApplicationNames *ofWindowClass(const QString &windowClass);

    /// All desktop entries that may stand for the identifier, the preferred ones first.
    [[nodiscard]] static QStringList desktopEntriesOf(const QString &bundleIdentifier);
};

} // namespace tirlo
