#pragma once

#include "BotColor.h"

namespace tirlo {

/// The paint of a text such as "#3B9EFF" at an opacity from 0 to 1; black for any other text.
[[nodiscard]] inline QColor gHex(QStringView text, double alpha = 1)
{
    return cgColorFromHex(text).value_or(BotColor()).paint(alpha);
}

} // namespace tirlo
