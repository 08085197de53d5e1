#pragma once

#include <QColor>
#include <QMap>
#include <QPlainTextEdit>

#include <functional>

namespace tirlo {

/// What stands beside a line: a sign in the margin, null for none, and a wash of the colour on the
/// line.
struct LineMark
{
    QChar sign;
    QColor color;
};

/// A box of lines to read, some of which carry a mark.
///
/// Hidden marks in the text show as "�".
class MarkedLines final : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit MarkedLines(QWidget *parent = nullptr);

    /// Shows the text with these marks on its lines, counted from 0, and scrolls to the first of
    /// them. Without signs there is no margin.
    void showText(const QString &text, const QMap<int, LineMark> &marks);

    /// Makes the box as high as this many lines and the bar to scroll sideways.
    void setFixedLines(int count);

    /// The height in points at which all lines are seen, as the box is wide now; measured no
    /// further than `most`.
    [[nodiscard]] int heightOfText(int most) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeMargin();
    void paintMargin();
    /// Tells where in the viewport each marked line stands that is in sight.
    void visitMarked(const std::function<void(const LineMark &mark, QRectF line)> &visit) const;

    QWidget *const m_margin;
    QMap<int, LineMark> m_marks;
};

} // namespace tirlo
