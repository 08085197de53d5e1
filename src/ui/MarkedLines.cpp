#include "MarkedLines.h"

#include "core/HiddenMarks.h"

#include <QEvent>
#include <QFontDatabase>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

constexpr int marginWidth = 16;
/// In characters.
constexpr int tabStop = 4;
constexpr int washAlpha = 48;

} // namespace

MarkedLines::MarkedLines(QWidget *parent)
    : QPlainTextEdit(parent)
    , m_margin(new QWidget(this))
{
    setReadOnly(true);
    setTabChangesFocus(true);
    // With a cursor, the arrow keys walk and scroll.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_margin->installEventFilter(this);
    connect(this, &QPlainTextEdit::updateRequest, m_margin, qOverload<>(&QWidget::update));
}

void MarkedLines::showText(const QString &text, const QMap<int, LineMark> &marks)
{
    m_marks = marks;
    const bool hasSigns
        = std::ranges::any_of(marks, [](const LineMark &mark) { return !mark.sign.isNull(); });
    m_margin->setVisible(hasSigns);
    setViewportMargins(hasSigns ? marginWidth : 0, 0, 0, 0);
    placeMargin();
    setPlainText(withoutHiddenMarks(text));
    setTabStopDistance(tabStop * fontMetrics().horizontalAdvance(u' '));

    if (!marks.isEmpty())
        setTextCursor(QTextCursor(document()->findBlockByNumber(marks.firstKey())));
    m_margin->update();
}

void MarkedLines::setFixedLines(int count)
{
    // The last line counts as seen with a point to spare below it.
    const int frame = 2 * (frameWidth() + int(document()->documentMargin())) + 1;
    setFixedHeight(count * fontMetrics().lineSpacing() + frame
                   + horizontalScrollBar()->sizeHint().height());
}

int MarkedLines::heightOfText(int most) const
{
    const double frame = 2 * (frameWidth() + document()->documentMargin());
    double height = frame;
    for (QTextBlock block = document()->firstBlock(); block.isValid() && height < most;
         block = block.next())
        height += blockBoundingRect(block).height();
    return std::min(int(std::ceil(height)), most);
}

bool MarkedLines::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_margin || event->type() != QEvent::Paint)
        return QPlainTextEdit::eventFilter(watched, event);
    paintMargin();
    return true;
}

void MarkedLines::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    visitMarked([&](const LineMark &mark, QRectF line) {
        QColor wash = mark.color;
        wash.setAlpha(washAlpha);
        line.setWidth(viewport()->width());
        painter.fillRect(line, wash);
    });
    painter.end();
    QPlainTextEdit::paintEvent(event);
}

void MarkedLines::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    placeMargin();
}

void MarkedLines::placeMargin()
{
    const QRect inside = contentsRect();
    m_margin->setGeometry(inside.left(), inside.top(), marginWidth, viewport()->height());
}

void MarkedLines::paintMargin()
{
    QPainter painter(m_margin);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Text));
    visitMarked([&](const LineMark &mark, const QRectF &line) {
        painter.drawText(QRectF(0, line.top(), marginWidth, fontMetrics().lineSpacing()),
                         Qt::AlignCenter, mark.sign);
    });
}

void MarkedLines::visitMarked(
    const std::function<void(const LineMark &mark, QRectF line)> &visit) const
{
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF line = blockBoundingGeometry(block).translated(contentOffset());
        if (line.top() > viewport()->height())
            return;
        const auto mark = m_marks.constFind(block.blockNumber());
        if (mark != m_marks.constEnd())
            visit(*mark, line);
    }
}

} // namespace tirlo
