#pragma once

#include "TextLabel.h"

namespace tirlo {

/// A read-only box with one line of monospaced text that elides in its middle.
class CodeBlock final : public TextLabel
{
    Q_OBJECT

public:
    explicit CodeBlock(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    [[nodiscard]] QRect textRect() const override;
};

} // namespace tirlo
