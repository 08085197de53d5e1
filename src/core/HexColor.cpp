#include "HexColor.h"

#include <QByteArray>

#include <charconv>

namespace tirlo {

std::optional<std::uint32_t> rgbFromHex(QStringView text)
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
    return std::uint32_t(number & 0xFFFFFF);
}

} // namespace tirlo
