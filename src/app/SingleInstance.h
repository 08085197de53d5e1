#pragma once

#include "core/Paths.h"

#include <QLockFile>

namespace tirlo {

/// Sees to it that one program runs a home: a later start finds the first one alive.
class SingleInstance
{
public:
    explicit SingleInstance(const Paths &paths);

    /// Takes the place of the one program; false when another has it, which is then asked to show
    /// itself. Where no lock can be made at all, the program goes on.
    [[nodiscard]] bool claim();

private:
    QLockFile m_lock;
};

} // namespace tirlo
