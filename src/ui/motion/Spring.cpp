#include "Spring.h"

#include <cmath>
#include <numbers>

namespace tirlo {

double Spring::frequency() const
{
    return 2 * std::numbers::pi / response;
}

SpringFactors Spring::factorsAt(double seconds) const
{
    if (response <= 0)
        return {};

    // The three regimes share one form. Both basic solutions carry the decay already, so that the
    // growing hyperbolic ones of a stiffly damped spring never overflow.
    const double omega = frequency();
    const double decay = dampingFraction * omega;
    double even = std::exp(-decay * seconds);
    double odd = even * seconds;
    if (dampingFraction < 1) {
        const double swing = omega * std::sqrt(1 - dampingFraction * dampingFraction);
        odd = even * std::sin(swing * seconds) / swing;
        even *= std::cos(swing * seconds);
    } else if (dampingFraction > 1) {
        const double rate = omega * std::sqrt(dampingFraction * dampingFraction - 1);
        const double slow = std::exp((rate - decay) * seconds);
        odd = -slow * std::expm1(-2 * rate * seconds) / (2 * rate);
        even = slow * (1 + std::exp(-2 * rate * seconds)) / 2;
    }

    return {
        .valuePerDisplacement = even + decay * odd,
        .valuePerVelocity = odd,
        .velocityPerDisplacement = -omega * omega * odd,
        .velocityPerVelocity = even - decay * odd,
    };
}

} // namespace tirlo
