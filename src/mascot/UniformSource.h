#pragma once

#include <QRandomGenerator>

#include <functional>

namespace tirlo {

/// Gives a fresh uniform value between 0 and 1 at each call.
using UniformSource = std::function<double()>;

/// The program's ordinary source of chance, unseeded.
[[nodiscard]] inline double systemUniform()
{
    return QRandomGenerator::global()->generateDouble();
}

} // namespace tirlo
