#pragma once

#include "e2e/kit/Agent.h"
#include "e2e/kit/Program.h"

#include <QString>

namespace tirlo {

/// Plays one agent's session against the real program, through the hook script that it installed.
///
/// On the virtual desktop it presses "Allow" itself and leaves a picture of each stage. On a real
/// one the person presses it; after a while without an answer the agent gives up waiting, as it
/// does when it is answered elsewhere.
class Demo
{
public:
    /// The program's binary and the folder for the pictures, which is made when it is missing.
    Demo(const QString &binary, QString pictures);

    /// Plays the session to its end; false when a stage fails, which is said on standard error.
    [[nodiscard]] bool play();

private:
    [[nodiscard]] bool begin();
    [[nodiscard]] bool runTools();
    [[nodiscard]] bool askPermission();
    [[nodiscard]] bool finish();

    /// Says what happens now, lets it be seen, and keeps a picture where the desktop is ours.
    void stage(const QString &name, const QString &sentence);
    [[nodiscard]] bool pressAllow() const;

    e2e::Program m_program;
    e2e::Agent m_agent;
    QString m_pictures;
    int m_stages = 0;
};

} // namespace tirlo
