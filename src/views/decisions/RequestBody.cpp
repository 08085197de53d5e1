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
#include "ui/WrappedText.h"

#include <QCoreApplication>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStackedLayout>
#include <QTextBlock>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

constexpr double fillOpacity = 0.06;
constexpr int leftMargin = Style::codePadding / 2;
/// Laying out more at once would be felt.
constexpr qsizetype mostCharacters = 120'000;
constexpr int mostLines = 10'000;
/// Tints beyond these are no help to a reader.
constexpr qsizetype mostTints = 200;

const LineMark addedMark{u'+', Style::success};
const LineMark removedMark{u'−', Style::failure};
// The lines of a patch bring their signs.
const LineMark addedLine{QChar(), Style::success};
const LineMark removedLine{QChar(), Style::failure};

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

qsizetype linesOf(const QString &text)
{
    return text.count(u'\n') + (text.endsWith(u'\n') ? 0 : 1);
}

/// Where the part of the text ends that is laid out at once.
qsizetype endOfBeginning(const QString &text)
{
    qsizetype end = std::min(text.size(), mostCharacters);
    if (end < text.size() && text[end - 1].isHighSurrogate())
        --end;
    int lines = 0;
    for (qsizetype i = 0; i < end; ++i) {
        if (text[i] == u'\n' && ++lines == mostLines)
            return i;
    }
    return end;
}

/// What is said in place of the rest.
QString wordsFor(QStringView rest)
{
    const qsizetype lines = rest.count(u'\n');
    return QStringLiteral("\n… %1 more %2; look in the terminal")
        .arg(lines > 0 ? lines : rest.size())
        .arg(lines > 0 ? QStringLiteral("lines") : QStringLiteral("characters"));
}

/// Has the widget take its size, which it is told late while it isn't on show.
void tellSize(QWidget &widget)
{
    QResizeEvent event(widget.size(), QSize());
    QCoreApplication::sendEvent(&widget, &event);
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
    m_pages->setContentsMargins(leftMargin, 0, 0, 0);
    m_pages->addWidget(m_lines);
    m_pages->addWidget(m_plan);
    m_lines->installEventFilter(this);
    m_plan->installEventFilter(this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

bool RequestBody::showContent(const RequestContent &content, int width)
{
    const int bar = m_plan->verticalScrollBar()->sizeHint().width();
    const bool isPlanAlone = content.kind == RequestContent::Kind::plan && content.subject.isEmpty()
        && content.more.isEmpty();
    if (!isPlanAlone || !m_plan->showMarkdown(content.text, width - leftMargin - bar))
        return showLines(content);
    m_pages->setCurrentWidget(m_plan);
    m_lineCount = linesOf(content.text);
    return true;
}

int RequestBody::heightFor(int width, int most)
{
    // A bar that is not needed would take width from what is measured.
    auto &box = static_cast<QAbstractScrollArea &>(*m_pages->currentWidget());
    box.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    resize(width, most);
    for (QWidget *widget :
         {static_cast<QWidget *>(this), static_cast<QWidget *>(&box), box.viewport()})
        tellSize(*widget);
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

bool RequestBody::showLines(const RequestContent &content)
{
    m_pages->setCurrentWidget(m_lines);
    QStringList lines;
    QMap<int, LineMark> marks;
    const int above = content.subject.isEmpty() ? 0 : int(content.subject.count(u'\n')) + 1;
    const auto append = [&](const QString &line, const LineMark *mark) {
        if (mark)
            marks.insert(above + int(lines.size()), *mark);
        lines.append(line);
    };
    m_lineCount = linesOf(content.text);
    if (content.kind == RequestContent::Kind::diff) {
        for (const DiffLine &line : diffLines(content.before, content.text))
            append(line.text,
                   line.kind == DiffLine::Kind::added         ? &addedMark
                       : line.kind == DiffLine::Kind::removed ? &removedMark
                                                              : nullptr);
        m_lineCount = lines.size();
    } else if (content.kind == RequestContent::Kind::patch) {
        for (const QString &line : content.text.split(u'\n'))
            append(line,
                   line.startsWith(u'+')       ? &addedLine
                       : line.startsWith(u'-') ? &removedLine
                                               : nullptr);
    } else if (!content.text.isEmpty()) {
        lines.append(content.text);
    }
    if (!content.subject.isEmpty())
        lines.prepend(content.subject);
    if (!content.more.isEmpty())
        lines.append(content.more);

    QString text = lines.join(u'\n');
    const qsizetype end = endOfBeginning(text);
    const bool isWhole = end == text.size();
    if (!isWhole) {
        text = text.first(end) + wordsFor(QStringView(text).sliced(end));
        marks.remove(int(text.count(u'\n')));
    }
    // What was there before is not laid out another time.
    m_lines->clear();
    m_lines->setWordWrapMode(wrapModeFor(text));
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
    if (content.kind != RequestContent::Kind::fields && !content.text.isEmpty() && isWhole) {
        const qsizetype more = withoutHiddenMarks(content.more).size();
        tint(0, withoutHiddenMarks(content.subject).size(), Style::secondaryText);
        tint(shown.size() - more, more, Style::secondaryText);
    }
    if (content.kind == RequestContent::Kind::command) {
        for (const TextRange &part : riskyWords(shown).mid(0, mostTints))
            tint(part.start, part.length, Style::waiting);
    }
    m_lines->setExtraSelections(tints);
    return isWhole;
}

} // namespace tirlo
