#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

namespace tirlo::e2e {

class TrayHost;

/// One row of an item's menu as the tray gets it.
struct TrayRow
{
    int id = 0;
    QVariantMap properties;
};

/// An item of the tray, asked in the tray's place.
class TrayItem
{
public:
    /// The item with this name on the bus; the host outlives it.
    TrayItem(const TrayHost &host, QString service);

    /// What the item says of itself.
    [[nodiscard]] QVariantMap properties() const;
    /// The rows of its menu, separators included.
    [[nodiscard]] QList<TrayRow> menu() const;
    /// Chooses the row of the menu as a click on it does.
    void choose(const TrayRow &row) const;

private:
    [[nodiscard]] QVariantList ask(const QString &path, const QString &interface,
                                   const QString &method, const QVariantList &arguments) const;
    [[nodiscard]] QString menuPath() const;

    const TrayHost &m_host;
    const QString m_service;
};

} // namespace tirlo::e2e
