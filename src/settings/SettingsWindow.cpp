#include "SettingsWindow.h"

#include "SettingsView.h"

#include <QVBoxLayout>

namespace tirlo {

namespace {

constexpr QSize initialSize(480, 720);
constexpr QSize minimumContentSize(420, 320);

} // namespace

SettingsWindow::SettingsWindow(HookInstallers &hooks, const Paths &paths, QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setWindowTitle(tr("Settings — Tirlo"));
    resize(initialSize);
    setMinimumSize(minimumContentSize);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(new SettingsView(hooks, paths));
}

} // namespace tirlo
