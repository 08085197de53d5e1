#include "AgentHooksSection.h"

#include "hooks/installers/GuardedHooks.h"

namespace tirlo {

AgentHooksSection::AgentHooksSection(GuardedHooks &installer)
    : HookSection(installer)
    , m_installer(installer)
{
}

void AgentHooksSection::refresh()
{
    setHooksInstalled(m_installer.hooksInstalled());
}

QString AgentHooksSection::showWritten()
{
    setHooksInstalled(m_pendingInstall);
    const AgentDefinition &agent = m_installer.agent();
    if (!m_pendingInstall)
        return tr("✓ %1 hooks removed.").arg(agent.name);
    if (agent.wantsTrustInHooks)
        return tr("✓ %1 hooks installed — run /hooks in %1 or open Hooks in the app's settings to "
                  "trust them.")
            .arg(agent.name);
    return tr("✓ %1 hooks installed in %2").arg(agent.name, m_installer.label());
}

void AgentHooksSection::triggerPreview(bool install)
{
    m_pendingInstall = install;
    openPreview([&] { return m_installer.previewHooks(install); }, tr("❌ %1"));
}

void AgentHooksSection::setHooksInstalled(bool isInstalled)
{
    if (!isInstalled) {
        setLine(m_installer.label());
        return;
    }
    const AgentDefinition &agent = m_installer.agent();
    const QString toDo = agent.wantsTrustInHooks
        ? tr(
            "Hooks installed — open %1 and run /hooks or open Hooks in the app's settings to trust "
            "them")
        : tr("Hooks installed — restart %1 to activate");
    setLine(toDo.arg(agent.name));
}

} // namespace tirlo
