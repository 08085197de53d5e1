#include "SettingsView.h"

#include "AgentHooksSection.h"
#include "ClaudeHooksSection.h"
#include "core/Paths.h"
#include "hooks/installers/HookInstallers.h"

#include <QAccessible>
#include <QLabel>
#include <QScrollArea>
#include <QShowEvent>
#include <QVBoxLayout>

namespace tirlo {

SettingsView::SettingsView(HookInstallers &hooks, const Paths &paths, QWidget *parent)
    : QWidget(parent)
    , m_scroller(new QScrollArea)
    , m_status(new QLabel)
{
    auto *content = new QWidget;
    auto *sections = new QVBoxLayout(content);
    addHookSections(*sections, hooks, paths);
    sections->addStretch();

    m_scroller->setWidgetResizable(true);
    m_scroller->setFrameShape(QFrame::NoFrame);
    m_scroller->setWidget(content);
    m_scroller->setAccessibleName(tr("Settings"));

    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    m_status->setMargin(sections->contentsMargins().left());
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // What is below keeps its place when the line comes and goes.
    QSizePolicy policy = m_status->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_status->setSizePolicy(policy);
    m_status->hide();

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_status);
    column->addWidget(m_scroller, 1);
}

void SettingsView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    for (HookSection *section : m_hookSections)
        section->refresh();
}

void SettingsView::addHookSections(QVBoxLayout &column, HookInstallers &hooks, const Paths &paths)
{
    m_hookSections = {new ClaudeHooksSection(hooks.claude, paths.hookScriptShown())};
    for (const auto &installer : hooks.guarded)
        m_hookSections.append(new AgentHooksSection(*installer));
    for (HookSection *section : m_hookSections) {
        column.addWidget(section);
        connect(section, &HookSection::statusChanged, this, &SettingsView::setStatusMessage);
        connect(section, &HookSection::previewOpened, this, &SettingsView::reveal);
    }
}

void SettingsView::setStatusMessage(const QString &message)
{
    m_status->setText(message);
    m_status->setVisible(!message.isEmpty());
    // A screen reader says it wherever the keyboard is.
    QAccessibleEvent alert(m_status, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void SettingsView::reveal(QWidget *widget)
{
    // The column grows when its boxes do, which they tell it of by and by.
    QMetaObject::invokeMethod(
        widget, [this, widget] { m_scroller->ensureWidgetVisible(widget, 0, 8); },
        Qt::QueuedConnection);
}

} // namespace tirlo
