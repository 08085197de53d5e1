#include "RequestBody.h"

#include "core/HiddenMarks.h"
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
#include <QScrollBar>
#include <QStackedLayout>
#include <QTextBlock>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

constexpr double fillOpacity = 0.06;
/// Breaking a longer word at best is slow: it breaks anywhere.
constexpr int longestWord = 2000;
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

bool hasLongWord(const QString &text)
{
    int length = 0;
    for (const QChar character : text) {
        length = character.isSpace() ? 0 : length + 1;
        if (length > longestWord)
            return true;
    }
    return false;
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
    if (content.kind == RequestContent::Kind::plan && m_plan->showMarkdown(content.text))
        m_pages->setCurrentWidget(m_plan);
    else
        showLines(content);
}

int RequestBody::heightFor(int width, int most)
{
    // A bar that is not needed would take width from what is measured.
    auto &box = static_cast<QAbstractScrollArea &>(*m_pages->currentWidget());
    box.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    resize(width, most);
    m_pages->activate();
    int height = most;
    if (m_pages->currentWidget() == m_lines) {
        height = m_lines->heightOfText(most);
    } else {
        m_plan->document()->setTextWidth(m_plan->viewport()->width());
        height = std::min(int(std::ceil(m_plan->document()->size().height())), most);
    }
    if (height >= most)
        box.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    return height;
}

void RequestBody::scrollToStart()
{
    auto &box = static_cast<QAbstractScrollArea &>(*m_pages->currentWidget());
    box.verticalScrollBar()->setValue(0);
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
    } else if (content.kind == RequestContent::Kind::patch) {
        for (const QString &line : content.text.split(u'\n')) {
            const bool isAdded = line.startsWith(u'+');
            if (isAdded || line.startsWith(u'-'))
                marks.insert(int(lines.size()), isAdded ? addedMark : removedMark);
            lines.append(line);
        }
    } else if (!content.text.isEmpty()) {
        lines.append(content.text);
    }
    if (!content.more.isEmpty())
        lines.append(content.more);
    const QString text = lines.join(u'\n');
    m_lines->setWordWrapMode(hasLongWord(text) ? QTextOption::WrapAnywhere
                                               : QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_lines->showText(text, marks);
    m_lines->moveCursor(QTextCursor::Start);

    QList<QTextEdit::ExtraSelection> tints;
    const auto tint = [&](qsizetype start, qsizetype length, const QColor &color) {
        QTextEdit::ExtraSelection part;
        part.cursor = QTextCursor(m_lines->document());
        part.cursor.setPosition(int(start));
        part.cursor.setPosition(int(start + length), QTextCursor::KeepAnchor);
        part.format.setForeground(color);
        tints.append(part);
    };
    // What is said about the content is told apart from it.
    const QString shown = m_lines->toPlainText();
    const qsizetype more = withoutHiddenMarks(content.more).size();
    if (content.kind != RequestContent::Kind::fields && !content.text.isEmpty()) {
        tint(0, withoutHiddenMarks(content.subject).size(), Style::secondaryText);
        tint(shown.size() - more, more, Style::secondaryText);
    }
    if (content.kind == RequestContent::Kind::command) {
        for (const TextRange &part : riskyWords(shown).mid(0, mostTints))
            tint(part.start, part.length, Style::waiting);
    }
    m_lines->setExtraSelections(tints);
}

} // namespace tirlo
