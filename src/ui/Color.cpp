#include "Color.h"

#include "core/HexColor.h"

#include <algorithm>

namespace tirlo {

QColor colorFromHex(const QString &text)
{
    return QColor::fromRgb(rgbFromHex(text).value_or(0));
}

QColor lighter(const QColor &color, double amount)
{
    const auto raised = [amount](float component) {
        return float(std::clamp(double(component) + amount, 0.0, 1.0));
    };
    return QColor::fromRgbF(raised(color.redF()), raised(color.greenF()), raised(color.blueF()),
                            color.alphaF());
}

QColor mixed(const QColor &from, const QColor &to, double share)
{
    const auto between = [share](float a, float b) {
        return float(std::clamp(double(a) + (double(b) - double(a)) * share, 0.0, 1.0));
    };
    return QColor::fromRgbF(between(from.redF(), to.redF()), between(from.greenF(), to.greenF()),
                            between(from.blueF(), to.blueF()), between(from.alphaF(), to.alphaF()));
}

QColor withOpacity(const QColor &color, double opacity)
{
    QColor faded = color;
    faded.setAlphaF(float(std::clamp(opacity, 0.0, 1.0)));
    return faded;
}

} // namespace tirlo
