#include "BotColor.h"

#include "core/HexColor.h"

#include <algorithm>

namespace tirlo {

QColor BotColor::paint(double opacity) const
{
    const auto component = [](double value) { return float(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(red), component(green), component(blue), component(opacity));
}

BotColor BotColor::lightened(double amount) const
{
    const auto lighten = [amount](double value) { return value + (1 - value) * amount; };
    return {lighten(red), lighten(green), lighten(blue)};
}

std::optional<BotColor> cgColorFromHex(QStringView text)
{
    const auto rgb = rgbFromHex(text);
    if (!rgb)
        return std::nullopt;
    const auto component = [rgb](int shift) { return double(*rgb >> shift & 0xFF) / 255; };
    return BotColor{component(16), component(8), component(0)};
}

} // namespace tirlo
