#pragma once

#include <QAbstractButton>

namespace tirlo {

/// A quiet button amid a line of text: small words that light up under the pointer.
///
/// While checked it stays lit. Its accessible name is its text. A click never moves the keyboard
/// focus to it.
class TextButton final : public QAbstractButton
{
    Q_OBJECT

public:
    explicit TextButton(QWidget *parent = nullptr);

    /// Shows the words, and tells them to a screen reader.
    void setWords(const QString &words);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tirlo
