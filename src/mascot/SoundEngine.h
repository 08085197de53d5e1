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

/// Makes no sound and keeps the name of what was asked last.
class SilentSoundEngine final : public SoundEngine
{
public:
    void play(const QString &name) override { m_lastName = name; }

    /// The last name asked for; empty before the first.
    [[nodiscard]] QString lastName() const { return m_lastName; }

private:
    QString m_lastName;
};

} // namespace tirlo
