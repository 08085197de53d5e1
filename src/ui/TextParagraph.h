#pragma once

#include <QLabel>

namespace tirlo {

/// A label of foreign text over a few lines, which elides what does not fit into the last of them.
///
/// The whole text is its accessible name, and its tool tip while some of it is hidden.
class TextParagraph final : public QLabel
{
    Q_OBJECT

public:
    TextParagraph(const QFont &font, const QColor &color, int mostLines, QWidget *parent = nullptr);

    /// Shows the text; markup in it is not interpreted, and its line breaks count as blanks.
    void showText(const QString &text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// The lines as drawn in that width.
    [[nodiscard]] QStringList linesIn(int width) const;

    const QColor m_color;
    const int m_mostLines;
    QString m_shown;
};

} // namespace tirlo
