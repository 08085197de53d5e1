#pragma once

#include <QWidget>

namespace tirlo {

class HookInstallers;
class Paths;

/// The settings in a window of their own, in the desktop's look.
class SettingsWindow final : public QWidget
{
    Q_OBJECT

public:
    /// The window on these settings; the installers outlive it.
    SettingsWindow(HookInstallers &hooks, const Paths &paths, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The window has the keyboard for the first time, by when the desktop has framed it.
    void appeared();

protected:
    void changeEvent(QEvent *event) override;

private:
    bool m_hasAppeared = false;
};

} // namespace tirlo
