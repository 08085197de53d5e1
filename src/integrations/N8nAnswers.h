#pragma once

#include <QByteArray>
#include <QLatin1String>
#include <QString>

#include <optional>

/// Reading of what an n8n instance tells of its workflows' executions.
namespace tirlo::N8n {

/// Stands for the name of a workflow that has none, or whose name could not be learned.
inline constexpr QLatin1String unnamedWorkflow("Workflow");

/// The answer to a question for the newest execution.
struct Listing
{
    /// False when the answer is no list of executions.
    bool isList = false;
    bool isEmpty = true;
    /// Of the newest execution; numbers stand in their decimal form.
    std::optional<QString> id = {};
    /// Of the newest execution; empty if absent.
    QString status = {};
};

/// What is told of one execution.
struct Execution
{
    QString workflowName;
    /// A digest of the last node's output, or of the error.
    std::optional<QString> detail;
};

[[nodiscard]] Listing parseListing(const QByteArray &body);

/// Nothing when the body is no JSON object.
[[nodiscard]] std::optional<Execution> parseExecution(const QByteArray &body, bool success);

} // namespace tirlo::N8n
