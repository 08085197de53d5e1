#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>

#include <optional>

namespace tirlo {

/// What the desktop's portal tells of the user's wishes, as they change.
///
/// Where there is no bus or no portal, it tells nothing; one that comes later is asked. Nothing is
/// started for the asking, and nothing waits for an answer.
class PortalSettings final : public QObject
{
    Q_OBJECT

public:
    explicit PortalSettings(const QDBusConnection &bus = QDBusConnection::sessionBus());

    /// Whether the user wants less motion; false when nobody says so.
    [[nodiscard]] bool reducesMotion() const { return m_wantsLessMotion || !m_animates; }

    /// Whether the user prefers dark to light; empty without a preference.
    [[nodiscard]] std::optional<bool> prefersDark() const { return m_prefersDark; }

Q_SIGNALS:
    /// One of the wishes has changed.
    void changed();

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void ask();
    void take(const QString &group, const QString &key, const QVariant &value);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_arrival;
    bool m_wantsLessMotion = false;
    bool m_animates = true;
    std::optional<bool> m_prefersDark;
};

} // namespace tirlo
