#pragma once

#include <QString>

namespace tirlo {

/// Plays short named effects, fire and forget; callers don't care whether the sound exists.
class SoundEngine
{
public:
    virtual ~SoundEngine() = default;

    /// Asks for the effect with this name.
    virtual void play(const QString &name) = 0;
};

/// Makes no sound.
class SilentSoundEngine final : public SoundEngine
{
public:
    void play(const QString & /*name*/) override { }
};

} // namespace tirlo
