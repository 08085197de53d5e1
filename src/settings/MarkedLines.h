#pragma once

#include <QList>
#include <QPlainTextEdit>

#include <functional>

namespace tirlo {

/// A box of lines to read, some of which carry a mark in the margin and a wash of its colour.
class MarkedLines final : public QPlainTextEdit
{
    Q_OBJECT

public:
    /// `mark` stands in the margin of marked lines; `color` is the wash's, laid thinly on the base.
    MarkedLines(QChar mark, const QColor &color, QWidget *parent = nullptr);

    /// Shows the text, marks these of its lines, counted from 0, and scrolls to the first of them.
    void showText(const QString &text, const QList<int> &marked);

    /// Makes the box as high as this many lines and the bar to scroll sideways.
    void setFixedLines(int count);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void paintMargin();
    /// Tells where in the viewport each marked line stands that is in sight.
    void visitMarked(const std::function<void(const QRectF &line)> &visit) const;

    const QChar m_mark;
    const QColor m_color;
    QWidget *const m_margin;
    QList<int> m_marked;
};

} // namespace tirlo
