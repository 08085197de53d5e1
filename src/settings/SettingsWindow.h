#pragma once

#include <QWidget>

namespace tirlo {

/// The settings in a window of their own, in the desktop's look.
class SettingsWindow final : public QWidget
{
    Q_OBJECT

public:
    explicit SettingsWindow(QWidget *parent = nullptr);
};

} // namespace tirlo
