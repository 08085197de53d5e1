#include "PrimaryButton.h"

#include "Style.h"

#include <utility>

namespace tirlo {

PrimaryButton::PrimaryButton(const QString &title, const QString &kbd, std::function<void()> action,
                             QWidget *parent)
    : CardButton({.text = Style::onLight,
                  .fill = Style::primaryText,
                  .hoveredFill = Style::white,
                  .pressedFill = QColor(0xD3, 0xD6, 0xDC),
                  .stroke = Qt::transparent},
                 title, kbd, std::move(action), parent)
{
}

} // namespace tirlo
