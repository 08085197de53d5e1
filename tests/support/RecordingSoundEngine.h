#pragma once

#include "core/SoundEngine.h"

#include <QStringList>

namespace tirlo {

/// Keeps the names of all sounds asked for, in order.
class RecordingSoundEngine final : public SoundEngine
{
public:
    void play(const QString &name) override { played.append(name); }

    QStringList played;
};

} // namespace tirlo
