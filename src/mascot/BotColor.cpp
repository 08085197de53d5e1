#include "BotColor.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace tirlo {

QColor BotColor::paint(double opacity) const
{
    const auto component = [](double value) { return float(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(red), component(green), component(blue),
                            component(alpha * opacity));
}

BotColor BotColor::lightened(double amount) const
{
    const auto lighten = [amount](double value) { return value + (1 - value) * amount; };
    return {lighten(red), lighten(green), lighten(blue), alpha};
}

std::optional<BotColor> cgColorFromHex(QStringView text)
{
    while (text.startsWith(u'#'))
        text = text.sliced(1);
    while (text.endsWith(u'#'))
        text.chop(1);

    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);

    const QByteArray digits = text.toLatin1();
    const char *end = digits.constData() + digits.size();
    std::uint64_t number = 0;
    const auto [stop, error] = std::from_chars(digits.constData(), end, number, 16);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    // An unsigned number with a minus sign is one only when it is zero.
    if (negative && number != 0)
        return std::nullopt;

    const auto component = [number](int shift) { return double(number >> shift & 0xff) / 255; };
    return BotColor{component(16), component(8), component(0)};
}

} // namespace tirlo
