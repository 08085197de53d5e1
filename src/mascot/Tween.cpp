#include "Tween.h"

#include <algorithm>

namespace tirlo {

double Tween::progress(double nowMs) const
{
    const double elapsed = nowMs - startTime;
    if (elapsed == 0)
        return 0;
    return std::clamp(elapsed / keys[keyIndex].duration, 0.0, 1.0);
}

bool TweenTable::isEmpty() const
{
    return std::ranges::none_of(m_tweens, &std::optional<Tween>::has_value);
}

} // namespace tirlo
