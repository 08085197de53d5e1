#include "RequestBody.h"

#include "core/LineDiff.h"
#include "core/RiskyWords.h"
#include "ui/Color.h"
#include "ui/FocusRing.h"
#include "ui/MarkdownText.h"
#include "ui/MarkedLines.h"
#include "ui/SlimScrollBar.h"
#include "ui/Style.h"

#include <QEvent>
#include <QPainter>
#include <QStackedLayout>
#include <QTextBlock>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

constexpr double fillOpacity = 0.06;
/// A plan beyond this is shown as it was written: laying it out would be felt.
constexpr qsizetype longestRenderedPlan = 64 * 1024;
/// Tints beyond these are no help to a reader.
constexpr qsizetype mostTints = 200;

const LineMark addedMark{u'+', Style::success};
const LineMark removedMark{u'−', Style::failure};

void dress(QAbstractScrollArea &box)
{
    box.setFrameStyle(QFrame::NoFrame);
    SlimScrollBar::dress(box);
    QPalette colors = box.palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, Style::codeText);
    colors.setColor(QPalette::Highlight, withOpacity(Style::focusRing, 0.6));
    colors.setColor(QPalette::HighlightedText, Style::primaryText);
    box.setPalette(colors);
    box.viewport()->setAutoFillBackground(false);
    box.setAccessibleName(QStringLiteral("Request"));
}

} // namespace

RequestBody::RequestBody(QWidget *parent)
    : QWidget(parent)
    , m_lines(new MarkedLines)
    , m_plan(new MarkdownText)
    , m_pages(new QStackedLayout(this))
{
    m_lines->setFont(Style::codeFont(Style::codeSize));
    m_lines->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_lines->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    dress(*m_lines);
    dress(*m_plan);
    m_pages->setContentsMargins(Style::codePadding / 2, 0, 0, 0);
    m_pages->addWidget(m_lines);
    m_pages->addWidget(m_plan);
    m_lines->installEventFilter(this);
    m_plan->installEventFilter(this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void RequestBody::showContent(const RequestContent &content)
{
    const bool isRendered
        = content.kind == RequestContent::Kind::plan && content.text.size() <= longestRenderedPlan;
    if (isRendered)
        showPlan(content.text);
    else
        showLines(content);
}

int RequestBody::heightFor(int width, int most)
{
    resize(width, most);
    m_pages->activate();
    if (m_pages->currentWidget() == m_lines)
        return m_lines->heightOfText(most);
    m_plan->document()->setTextWidth(m_plan->viewport()->width());
    return std::min(int(std::ceil(m_plan->document()->size().height())), most);
}

int RequestBody::lineCount() const
{
    return m_pages->currentWidget() == m_lines ? m_lines->blockCount()
                                               : m_plan->document()->blockCount();
}

bool RequestBody::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QWidget::eventFilter(watched, event);
}

void RequestBody::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(Style::white, fillOpacity));
    painter.drawRoundedRect(rect(), Style::codeRadius, Style::codeRadius);
    if (FocusRing::isShown(*m_pages->currentWidget()))
        FocusRing::draw(painter, rect(), Style::codeRadius);
}

void RequestBody::showLines(const RequestContent &content)
{
    m_pages->setCurrentWidget(m_lines);
    QStringList lines;
    QMap<int, LineMark> marks;
    if (!content.subject.isEmpty())
        lines.append(content.subject);
    if (content.kind == RequestContent::Kind::diff) {
        for (const DiffLine &line : diffLines(content.before, content.text)) {
            if (line.kind != DiffLine::Kind::kept)
                marks.insert(int(lines.size()),
                             line.kind == DiffLine::Kind::added ? addedMark : removedMark);
            lines.append(line.text);
        }
    } else if (!content.text.isEmpty()) {
        lines.append(content.text);
    }
    if (!content.more.isEmpty())
        lines.append(content.more);
    m_lines->showText(lines.join(u'\n'), marks);
    m_lines->moveCursor(QTextCursor::Start);

    QList<QTextEdit::ExtraSelection> tints;
    if (content.kind == RequestContent::Kind::command) {
        for (const TextRange &part : riskyWords(m_lines->toPlainText()).mid(0, mostTints)) {
            QTextEdit::ExtraSelection tint;
            tint.cursor = QTextCursor(m_lines->document());
            tint.cursor.setPosition(int(part.start));
            tint.cursor.setPosition(int(part.start + part.length), QTextCursor::KeepAnchor);
            tint.format.setForeground(Style::waiting);
            tints.append(tint);
        }
    }
    m_lines->setExtraSelections(tints);
}

void RequestBody::showPlan(const QString &markdown)
{
    m_pages->setCurrentWidget(m_plan);
    m_plan->showMarkdown(markdown);
}

} // namespace tirlo
