#pragma once

#include <QList>
#include <QWidget>

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace tirlo {

class HookInstallers;
class HookSection;
class Paths;

/// The content of the settings window: one status line, and a column of titled boxes below it.
class SettingsView final : public QWidget
{
    Q_OBJECT

public:
    /// The installers outlive the view.
    SettingsView(HookInstallers &hooks, const Paths &paths, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void addHookSections(QVBoxLayout &column, HookInstallers &hooks, const Paths &paths);
    /// Shows the words in the status line; "" hides it.
    void setStatusMessage(const QString &message);
    /// Scrolls so that all of the widget can be seen, once it has its place.
    void reveal(QWidget *widget);

    QList<HookSection *> m_hookSections;
    QScrollArea *const m_scroller;
    QLabel *const m_status;
};

} // namespace tirlo
