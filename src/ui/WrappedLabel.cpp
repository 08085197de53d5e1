#include "WrappedLabel.h"

#include "core/HiddenMarks.h"

#include <QPainter>

namespace tirlo {

WrappedLabel::WrappedLabel(const QFont &font, const QColor &color, QWidget *parent)
    : QLabel(parent)
    , m_color(color)
{
    setTextFormat(Qt::PlainText);
    setFont(font);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    showText({});
}

void WrappedLabel::showText(const QString &text)
{
    const QString shown = withoutHiddenMarks(text);
    if (m_wrapped && shown == QLabel::text())
        return;
    m_wrapped.emplace(shown, font());
    setText(shown);
    updateGeometry();
    update();
}

QSize WrappedLabel::sizeHint() const
{
    return {0, fontMetrics().lineSpacing()};
}

int WrappedLabel::heightForWidth(int width) const
{
    return m_wrapped->heightFor(width);
}

void WrappedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(m_color);
    m_wrapped->draw(painter, {}, width());
}

} // namespace tirlo
