#pragma once

#include "WrappedText.h"

#include <QColor>
#include <QLabel>

#include <optional>

namespace tirlo {

/// A label of foreign text of which all is shown, over as many lines as it takes.
///
/// Markup in it is not interpreted, and hidden marks show as "�".
class WrappedLabel final : public QLabel
{
    Q_OBJECT

public:
    WrappedLabel(const QFont &font, const QColor &color, QWidget *parent = nullptr);

    void showText(const QString &text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const QColor m_color;
    mutable std::optional<WrappedText> m_wrapped;
};

} // namespace tirlo
