#pragma once

#include "views/ViewContext.h"

class QString;

namespace tirlo {

struct AgentTask;

/// Where each task has its home: an application, a web console, the chat or a terminal.
namespace AgentTargets {

/// What opening the task's target does, in words, such as "Open Vercel".
[[nodiscard]] QString description(const AgentTask &task);

/// Brings the thing behind the task to the front; one that is missing is passed over in silence.
void open(const AgentTask &task, const ViewContext &context);

/// The same, but starts a terminal where the task has its home in one and none runs.
void lookInto(const AgentTask &task, const ViewContext &context);

} // namespace AgentTargets

} // namespace tirlo
