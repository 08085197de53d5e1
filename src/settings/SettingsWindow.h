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

    /// The window as the desktop has it, made if it was not there.
    [[nodiscard]] QWindow *nativeWindow();

Q_SIGNALS:
    /// The desktop has put its frame around the window, for the first time.
    void framed();

protected:
    bool event(QEvent *event) override;

private:
    bool m_isFramed = false;
};

} // namespace tirlo
