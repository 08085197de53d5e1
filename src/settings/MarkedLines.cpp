#include "MarkedLines.h"

#include "core/HiddenMarks.h"

#include <QEvent>
#include <QFontDatabase>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

namespace tirlo {

namespace {

constexpr int marginWidth = 16;
constexpr int washAlpha = 48;

} // namespace

MarkedLines::MarkedLines(QChar mark, const QColor &color, QWidget *parent)
    : QPlainTextEdit(parent)
    , m_mark(mark)
    , m_color(color)
    , m_margin(new QWidget(this))
{
    setReadOnly(true);
    setTabChangesFocus(true);
    // With a cursor, the arrow keys walk and scroll.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setViewportMargins(marginWidth, 0, 0, 0);
    m_margin->installEventFilter(this);
    connect(this, &QPlainTextEdit::updateRequest, m_margin, qOverload<>(&QWidget::update));
}

void MarkedLines::showText(const QString &text, const QList<int> &marked)
{
    m_marked = marked;
    setPlainText(withoutHiddenMarks(text));

    if (!marked.isEmpty())
        setTextCursor(QTextCursor(document()->findBlockByNumber(marked.first())));
    m_margin->update();
}

void MarkedLines::setFixedLines(int count)
{
    // The last line counts as seen with a point to spare below it.
    const int frame = 2 * (frameWidth() + int(document()->documentMargin())) + 1;
    setFixedHeight(count * fontMetrics().lineSpacing() + frame
                   + horizontalScrollBar()->sizeHint().height());
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
    QColor wash = m_color;
    wash.setAlpha(washAlpha);
    QPainter painter(viewport());
    visitMarked([&](QRectF line) {
        line.setWidth(viewport()->width());
        painter.fillRect(line, wash);
    });
    painter.end();
    QPlainTextEdit::paintEvent(event);
}

void MarkedLines::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    const QRect inside = contentsRect();
    m_margin->setGeometry(inside.left(), inside.top(), marginWidth, viewport()->height());
}

void MarkedLines::paintMargin()
{
    QPainter painter(m_margin);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Text));
    visitMarked([&](const QRectF &line) {
        painter.drawText(QRectF(0, line.top(), marginWidth, line.height()), Qt::AlignCenter,
                         m_mark);
    });
}

void MarkedLines::visitMarked(const std::function<void(const QRectF &line)> &visit) const
{
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF line = blockBoundingGeometry(block).translated(contentOffset());
        if (line.top() > viewport()->height())
            return;
        if (std::ranges::binary_search(m_marked, block.blockNumber()))
            visit(line);
    }
}

} // namespace tirlo
