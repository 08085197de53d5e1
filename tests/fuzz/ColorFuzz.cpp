#include "Fuzz.h"
#include "ui/Color.h"

#include <QRegularExpression>

namespace tirlo {

/// The colour of a text, and the arithmetic on it; the last byte is a share.
void fuzz(const QByteArray &input)
{
    const QString text = QString::fromUtf8(input);
    const double share = input.isEmpty() ? 0 : double(std::uint8_t(input.back())) / 255;
    const QColor color = colorFromHex(text);
    REQUIRE(color.isValid() && color.alpha() == 255);
    REQUIRE(colorFromHex(u'#' + text + u'#') == color);
    REQUIRE(colorFromHex(color.name()) == color);

    static const QRegularExpression plain(QStringLiteral("^#*([0-9A-Fa-f]{1,16})#*$"),
                                          QRegularExpression::DontCaptureOption);
    static const QRegularExpression digit(QStringLiteral("[0-9A-Fa-f]"));
    if (!text.contains(digit)) {
        REQUIRE(color == QColor(0, 0, 0));
    } else if (plain.match(text).hasMatch() && !text.contains(u'\n')) {
        const QString digits = QString(text).remove(u'#').rightJustified(6, u'0').right(6);
        REQUIRE(color.name() == u'#' + digits.toLower());
    }

    const QColor light = lighter(color, share);
    REQUIRE(light.red() >= color.red() && light.green() >= color.green()
            && light.blue() >= color.blue() && light.alpha() == 255);
    REQUIRE(mixed(color, light, 0).rgba() == color.rgba());
    REQUIRE(mixed(color, light, 1).rgba() == light.rgba());
    const QColor between = mixed(color, light, share);
    REQUIRE(between.red() >= color.red() && between.red() <= light.red());
    REQUIRE(withOpacity(color, share).rgb() == color.rgb());
}

} // namespace tirlo
