#include "SecondaryButton.h"

#include "Color.h"
#include "Style.h"

#include <utility>

namespace tirlo {

SecondaryButton::SecondaryButton(const QString &title, const QString &kbd,
                                 std::function<void()> action, QWidget *parent)
    : CardButton({.text = Style::secondaryButtonText,
                  .fill = withOpacity(Style::white, Style::raisedOpacity),
                  .hoveredFill = withOpacity(Style::white, Style::hoveredOpacity),
                  .pressedFill = withOpacity(Style::white, Style::pressedOpacity),
                  .stroke = withOpacity(Style::white, Style::strokeOpacity)},
                 title, kbd, std::move(action), parent)
{
}

} // namespace tirlo
