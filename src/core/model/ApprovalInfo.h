#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

namespace tirlo {

/// What a request is about, whole and in words; nothing of it is cut or elided.
///
/// Hidden marks are already visible in all of it but the two texts of a diff, which are compared as
/// they are and so are made visible where they are shown.
struct RequestContent
{
    enum class Kind {
        /// A command, with all its lines.
        command,
        /// A text that is to be written.
        text,
        /// `before` is to be replaced by `text`.
        diff,
        /// Changes to files, as lines of which the added begin with "+" and the removed with "-".
        patch,
        /// A plan, in Markdown.
        plan,
        /// Arguments as "key: value" lines; the text may be empty.
        fields,
    };

    /// The tool in words, such as "Run a command".
    QString title = {};
    /// Why, in the agent's own words; may be empty.
    QString reason = {};
    /// The path, address, pattern, or server and tool it is about; may be empty.
    QString subject = {};
    Kind kind = Kind::fields;
    QString text = {};
    QString before = {};
    /// All other arguments as "key: value" lines, to be shown below the text; may be empty, and is
    /// so for `fields`.
    QString more = {};

    bool operator==(const RequestContent &) const = default;
};

/// One thing that a standing approval would keep.
struct StandingGrant
{
    /// Such as "Bash(touch:*) in this project".
    QString words;
    /// As the agent suggested it, to be handed back unchanged.
    QJsonObject suggestion;

    bool operator==(const StandingGrant &) const = default;
};

/// One question that an agent asks its user, in its own words, hidden marks included: they go back
/// with the answer.
struct AgentQuestion
{
    struct Option
    {
        QString label;
        QString description = {};

        bool operator==(const Option &) const = default;
    };

    QString text = {};
    QString header = {};
    QList<Option> options = {};
    bool multiSelect = false;

    bool operator==(const AgentQuestion &) const = default;
};

/// The one permission request that is on show.
struct ApprovalInfo
{
    /// Tells this request from every other of this run.
    quint64 id = 0;
    /// The agent session that asked.
    QString sessionId = {};
    QString tool = {};
    /// Canonical text of the tool's input; tells whether a later event is about the same call.
    QString inputKey = {};
    /// The task that asked.
    QString pillId = {};
    /// The session's subagent that asked; "" for the session itself.
    QString agentId = {};
    /// Shown name of the folder that the session works in.
    QString folder = {};
    /// The tool's input as it came, for an answer that goes back with it.
    QJsonObject input = {};

    RequestContent content = {};
    /// Empty when there is nothing to keep.
    QList<StandingGrant> grants = {};
    /// What the agent asks; empty for a permission.
    QList<AgentQuestion> questions = {};

    bool operator==(const ApprovalInfo &) const = default;
};

} // namespace tirlo
