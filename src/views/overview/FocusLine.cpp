#include "FocusLine.h"

#include "ui/Color.h"
#include "ui/ColorDot.h"
#include "ui/Style.h"
#include "ui/TextButton.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>

#include <algorithm>

namespace tirlo {

namespace {

QString sourceLabel(AgentSource source)
{
    switch (source) {
    case AgentSource::claudeCode:
        return QStringLiteral("Claude Code");
    case AgentSource::n8n:
        return QStringLiteral("n8n");
    case AgentSource::agent:
        return QStringLiteral("Agent");
    }
    return {};
}

/// Such as "3/12"; nothing without steps.
QString progressText(const AgentTask &task)
{
    if (task.steps.isEmpty())
        return {};
    const qsizetype index = std::clamp<qsizetype>(task.stepIndex, 0, task.steps.size() - 1);
    return QStringLiteral("%1/%2").arg(index + 1).arg(task.steps.size());
}

} // namespace

FocusLine::FocusLine(QWidget *parent)
    : QWidget(parent)
    , m_dot(new ColorDot)
    , m_name(new TextLabel(Style::font(Style::headSize, QFont::DemiBold), Style::primaryText))
    , m_source(new TextLabel(Style::font(Style::captionSize), Style::secondaryText))
    , m_progress(new TextLabel(Style::font(Style::captionSize), Style::faintText))
    , m_sessions(new TextButton)
{
    m_source->setNeverElided();
    m_progress->setNeverElided();
    m_sessions->setCheckable(true);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::headSpacing);
    row->addWidget(m_dot);
    row->addWidget(m_name);
    row->addWidget(m_source);
    row->addWidget(m_progress);
    row->addWidget(m_sessions);
    row->addStretch();
    setFixedHeight(Style::lineHeight);
}

void FocusLine::setTask(const std::optional<AgentTask> &task)
{
    for (QWidget *part : {static_cast<QWidget *>(m_dot), static_cast<QWidget *>(m_source)})
        part->setVisible(task.has_value());
    m_name->setVisible(task && !task->name.isEmpty());
    m_progress->setVisible(task && !task->steps.isEmpty());
    const bool hasSeveral = task && task->sessions.size() > 1;
    m_sessions->setVisible(hasSeveral);
    if (hasSeveral)
        m_sessions->setWords(QStringLiteral("%1 sessions").arg(task->sessions.size()));
    else
        m_sessions->setChecked(false);
    if (!task)
        return;
    m_dot->setColor(colorFromHex(task->color));
    m_name->setLine(task->name);
    m_source->setLine(sourceLabel(task->source));
    m_progress->setLine(progressText(*task));
}

} // namespace tirlo
