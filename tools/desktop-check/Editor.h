#pragma once

#include <QLineEdit>
#include <QVBoxLayout>
#include <QWidget>

namespace tirlo {

/// The window in which the user works while the island is there: a line to write, and a page that
/// counts the clicks on it.
class Editor final : public QWidget
{
public:
    Editor()
        : m_line(new QLineEdit)
    {
        setWindowTitle(QStringLiteral("Editor"));
        QPalette page = palette();
        page.setColor(QPalette::Window, Qt::white);
        setPalette(page);
        auto *column = new QVBoxLayout(this);
        column->addStretch();
        column->addWidget(m_line);
    }

    [[nodiscard]] int presses() const { return m_presses; }
    [[nodiscard]] QString text() const { return m_line->text(); }
    void write() { m_line->setFocus(); }

protected:
    void mousePressEvent(QMouseEvent *) override { ++m_presses; }

private:
    QLineEdit *m_line;
    int m_presses = 0;
};

} // namespace tirlo
