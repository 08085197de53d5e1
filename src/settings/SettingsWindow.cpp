#include "SettingsWindow.h"

#include "SettingsView.h"
#include "ui/ProgramIcon.h"

#include <QEvent>
#include <QIcon>
#include <QVBoxLayout>
#include <QWindow>

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

QWindow *SettingsWindow::nativeWindow()
{
    winId();
    return windowHandle();
}

bool SettingsWindow::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    // Nothing tells of the frame itself; one of these comes behind it.
    const QEvent::Type type = event->type();
    const bool mayBeFramed = type == QEvent::ActivationChange || type == QEvent::Move
        || type == QEvent::Resize || type == QEvent::UpdateRequest;
    if (m_isFramed || !mayBeFramed || !windowHandle() || windowHandle()->frameMargins().isNull())
        return isHandled;
    m_isFramed = true;
    // Not amid the event: the window moves on it.
    QMetaObject::invokeMethod(this, &SettingsWindow::framed, Qt::QueuedConnection);
    return isHandled;
}

} // namespace tirlo
