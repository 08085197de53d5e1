#include "SettingsWindow.h"

#include "SettingsView.h"
#include "ui/ProgramIcon.h"

#include <QEvent>
#include <QIcon>
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
    setWindowIcon(ProgramIcon::ofWindow());
    resize(initialSize);
    setMinimumSize(minimumContentSize);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(new SettingsView(hooks, paths));
}

void SettingsWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || m_hasAppeared || !isActiveWindow())
        return;
    m_hasAppeared = true;
    Q_EMIT appeared();
}

} // namespace tirlo
