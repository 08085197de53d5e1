#include "AgentTargets.h"

#include "TerminalRule.h"
#include "core/AgentCatalog.h"
#include "core/KeychainStore.h"
#include "core/model/AgentTask.h"
#include "core/WebUrl.h"
#include "platform/Applications.h"

#include <algorithm>
#include <array>

namespace tirlo::AgentTargets {

namespace {

enum class Kind { application, webPage, ownN8n, chat, terminal };

struct Target
{
    QLatin1String id;
    Kind kind;
    /// A bundle identifier or a web address.
    QLatin1String where = {};
    ChatProvider provider = {};
};

constexpr QLatin1String n8nPillId("integration_n8n");

/// Those of the tools that are no agents.
constexpr std::array targets{
    Target{QLatin1String("integration_resend"), Kind::webPage,
           QLatin1String("https://resend.com/emails")},
    Target{QLatin1String("integration_vercel"), Kind::webPage,
           QLatin1String("https://vercel.com/dashboard")},
    Target{QLatin1String("integration_github"), Kind::webPage, QLatin1String("https://github.com")},
    Target{n8nPillId, Kind::ownN8n},
    Target{QLatin1String("integration_stripe"), Kind::webPage,
           QLatin1String("https://dashboard.stripe.com/payments")},
    Target{QLatin1String("integration_notion"), Kind::webPage,
           QLatin1String("https://www.notion.so")},
    Target{QLatin1String("integration_calcom"), Kind::webPage,
           QLatin1String("https://app.cal.com/bookings")},
    Target{.id = QLatin1String("ai_anthropic"),
           .kind = Kind::chat,
           .provider = ChatProvider::anthropic},
    Target{.id = QLatin1String("ai_google"), .kind = Kind::chat, .provider = ChatProvider::google},
    Target{.id = QLatin1String("ai_openai"), .kind = Kind::chat, .provider = ChatProvider::openai},
};

Target targetOf(const AgentTask &task)
{
    if (const AgentDefinition *agent = AgentCatalog::ofPill(task.id)) {
        const Kind kind = agent->application.isEmpty() ? Kind::terminal : Kind::application;
        return {agent->pill.id, kind, agent->application};
    }
    const auto found = std::ranges::find(targets, task.id, &Target::id);
    if (found != targets.end())
        return *found;
    return {n8nPillId, task.source == AgentSource::n8n ? Kind::ownN8n : Kind::terminal};
}

void openPage(const std::optional<QString> &address, Applications &applications)
{
    if (const auto url = safeWebURL(address))
        applications.openUrl(*url);
}

} // namespace

QString description(const AgentTask &task)
{
    const Target target = targetOf(task);
    if (target.kind == Kind::terminal)
        return QStringLiteral("Open terminal");
    const PillDefinition *pill = PillCatalog::definition(target.id);
    const QString name = pill ? pill->name : task.name;
    return target.kind == Kind::chat ? QStringLiteral("Chat with %1").arg(name)
                                     : QStringLiteral("Open %1").arg(name);
}

void open(const AgentTask &task, const ViewContext &context)
{
    const Target target = targetOf(task);
    switch (target.kind) {
    case Kind::application:
        context.applications.open(target.where);
        break;
    case Kind::webPage:
        openPage(target.where, context.applications);
        break;
    case Kind::ownN8n:
        openPage(context.keychain.get(QStringLiteral("n8n-url")), context.applications);
        break;
    case Kind::chat:
        context.actions.switchChatProvider(target.provider);
        break;
    case Kind::terminal:
        TerminalRule::activate(context.applications);
        break;
    }
}

void lookInto(const AgentTask &task, const ViewContext &context)
{
    if (targetOf(task).kind == Kind::terminal)
        TerminalRule::open(context.applications);
    else
        open(task, context);
}

} // namespace tirlo::AgentTargets
