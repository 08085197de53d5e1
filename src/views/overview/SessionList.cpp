#include "SessionList.h"

#include "ui/ColorDot.h"
#include "ui/FocusRing.h"
#include "ui/SlimScrollBar.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "views/StateColor.h"

#include <QLocale>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace tirlo {

namespace {

constexpr int rowHeight = 20;
constexpr int largestFolderWidth = 96;
constexpr int barRoom = 8;

/// The locale's time of day, without the seconds that some give.
QString timeFormat()
{
    return QLocale().timeFormat(QLocale::ShortFormat).remove(QStringLiteral(":ss"));
}

/// What the session is doing, in words; its step where it is at work.
QString activityOf(const AgentSession &session)
{
    using enum BotState;
    const auto stepOr = [&session](const QString &words) {
        return session.step.isEmpty() ? words : session.step;
    };
    switch (session.state) {
    case working:
    case searching:
        return stepOr(QStringLiteral("working"));
    case thinking:
        return stepOr(QStringLiteral("thinking"));
    case approval:
        return session.waitsInTerminal ? session.step : QStringLiteral("needs permission");
    case question:
        return stepOr(QStringLiteral("asks a question"));
    case error:
        return QStringLiteral("failed");
    case ratelimit:
        return QStringLiteral("rate limit reached");
    case finished:
        return QStringLiteral("finished");
    case idle:
    case sleeping:
    case dizzy:
        return QStringLiteral("at rest");
    }
    return {};
}

} // namespace

class SessionList::Row final : public QWidget
{
public:
    Row()
        : m_dot(new ColorDot)
        , m_folder(
              new TextLabel(Style::font(Style::captionSize, QFont::DemiBold), Style::primaryText))
        , m_activity(new TextLabel(Style::font(Style::captionSize), Style::secondaryText))
        , m_since(new TextLabel(Style::font(Style::captionSize), Style::faintText))
    {
        setFixedHeight(rowHeight);
        m_since->setNeverElided();
        auto *row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, barRoom, 0);
        row->setSpacing(Style::headSpacing);
        row->addWidget(m_dot);
        row->addWidget(m_folder);
        row->addWidget(m_activity);
        row->addStretch();
        row->addWidget(m_since);
    }

    void show(const AgentSession &session)
    {
        if (session == m_shown)
            return;
        m_shown = session;
        m_dot->setColor(stateColor(session.state));
        m_folder->setLine(session.folder);
        m_folder->setFixedWidth(std::min(m_folder->sizeHint().width(), largestFolderWidth));
        m_activity->setLine(activityOf(session));
        m_since->setLine(QStringLiteral("since ")
                         + QLocale().toString(session.since.time(), timeFormat()));
    }

private:
    ColorDot *m_dot;
    TextLabel *m_folder;
    TextLabel *m_activity;
    TextLabel *m_since;
    AgentSession m_shown;
};

SessionList::SessionList(QWidget *parent)
    : QScrollArea(parent)
{
    auto *rows = new QWidget;
    m_column = new QVBoxLayout(rows);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
    m_column->addStretch();
    setWidget(rows);
    rows->setAutoFillBackground(false);
    setWidgetResizable(true);
    setFrameStyle(QFrame::NoFrame);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(QStringLiteral("Sessions"));
    SlimScrollBar::dress(*this);
    viewport()->setAutoFillBackground(false);
}

void SessionList::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    if (FocusRing::isShown(*this))
        FocusRing::draw(painter, viewport()->rect(), Style::codeRadius);
}

void SessionList::setSessions(const QList<AgentSession> &sessions)
{
    while (m_rows.size() > std::size_t(sessions.size())) {
        delete m_rows.back();
        m_rows.pop_back();
    }
    while (m_rows.size() < std::size_t(sessions.size())) {
        m_rows.push_back(new Row);
        m_column->insertWidget(m_column->count() - 1, m_rows.back());
    }
    widget()->setMinimumHeight(int(m_rows.size()) * rowHeight);
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i]->show(sessions[qsizetype(i)]);
}

} // namespace tirlo
