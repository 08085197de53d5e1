#include "SettingsWindow.h"

namespace tirlo {

namespace {

constexpr QSize initialSize(480, 720);
constexpr QSize minimumContentSize(420, 320);

} // namespace

SettingsWindow::SettingsWindow(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setWindowTitle(tr("Settings — Tirlo"));
    resize(initialSize);
    setMinimumSize(minimumContentSize);
}

} // namespace tirlo
