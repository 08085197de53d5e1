#pragma once

#include "Command.h"

namespace tirlo {

class Paths;

/// The program that already runs this home, as another start of it sees it.
namespace RunningProgram {

enum class Answer {
    done,
    /// No program runs this home.
    notRunning,
    /// There is one, which does not answer: it is stopped, say.
    silent,
    /// It is another user's.
    notAllowed,
    /// It is of a version that does not know the command.
    unknown,
};

/// Asks the program to do the command and waits for it two seconds at most; a program that quits is
/// waited for ten, so that another can be started then.
[[nodiscard]] Answer ask(const Paths &paths, Command command);

/// What the answer means, as one line for the terminal; "" when all is well.
[[nodiscard]] const char *complaint(Answer answer);

} // namespace RunningProgram

} // namespace tirlo
