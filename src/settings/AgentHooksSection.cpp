#include "AgentHooksSection.h"

#include "hooks/installers/GuardedHooks.h"

#include <utility>

namespace tirlo {

AgentHooksSection::AgentHooksSection(GuardedHooks &installer, AgentHooksWords words)
    : HookSection(installer, words.title)
    , m_installer(installer)
    , m_words(std::move(words))
{
}

void AgentHooksSection::refresh()
{
    setHooksInstalled(m_installer.hooksInstalled());
}

QString AgentHooksSection::showWritten()
{
    setHooksInstalled(m_pendingInstall);
    return m_pendingInstall ? m_words.installed : m_words.removed;
}

void AgentHooksSection::triggerPreview(bool install)
{
    m_pendingInstall = install;
    openPreview([&] { return m_installer.previewHooks(install); }, tr("❌ %1"));
}

void AgentHooksSection::setHooksInstalled(bool isInstalled)
{
    setLine(isInstalled ? m_words.installedLine : m_installer.label());
}

} // namespace tirlo
