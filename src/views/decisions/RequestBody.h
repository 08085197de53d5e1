#pragma once

#include "core/model/ApprovalInfo.h"

#include <QWidget>

class QStackedLayout;

namespace tirlo {

class MarkdownText;
class MarkedLines;

/// All that a request is about, to be read before it is answered.
///
/// Long lines wrap, what is longer than its room scrolls, and nothing is left out. Words that
/// destroy are tinted, and an edit shows its removed and its added lines.
class RequestBody final : public QWidget
{
    Q_OBJECT

public:
    explicit RequestBody(QWidget *parent = nullptr);

    /// Shows the content, to be laid out at that width; false when there is more of it than can be
    /// laid out at once, which the last line then says.
    bool showContent(const RequestContent &content, int width);

    /// The height in points at which all is seen at that width, but `most` at most.
    [[nodiscard]] int heightFor(int width, int most);

    /// How many lines the content has, its path and other arguments aside.
    [[nodiscard]] qsizetype lineCount() const { return m_lineCount; }

    /// Shows its beginning.
    void scrollToStart();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool showLines(const RequestContent &content);

    MarkedLines *m_lines;
    MarkdownText *m_plan;
    QStackedLayout *m_pages;
    qsizetype m_lineCount = 0;
};

} // namespace tirlo
