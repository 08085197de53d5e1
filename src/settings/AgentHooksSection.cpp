#include "AgentHooksSection.h"

#include "hooks/installers/GuardedHooks.h"
#include "hooks/installers/HookError.h"

#include <utility>

namespace tirlo {

AgentHooksSection::AgentHooksSection(GuardedHooks &installer, AgentHooksWords words)
    : HookSection(words.title)
    , m_installer(installer)
    , m_words(std::move(words))
{
    connect(this, &HookSection::installPressed, this, [this] { triggerPreview(true); });
    connect(this, &HookSection::uninstallPressed, this, [this] { triggerPreview(false); });
    connect(this, &HookSection::confirmPressed, this, &AgentHooksSection::confirmOp);
    connect(this, &HookSection::cancelPressed, this, &AgentHooksSection::cancel);
}

void AgentHooksSection::refresh()
{
    setHooksInstalled(m_installer.hooksInstalled());
}

void AgentHooksSection::triggerPreview(bool install)
{
    m_pendingInstall = install;
    try {
        openPreview(m_installer, m_installer.previewHooks(install));
    } catch (const HookError &error) {
        closePreview();
        const bool isMereNote = error.domain() == HookError::Domain::tirloNoop;
        Q_EMIT statusChanged(isMereNote ? error.message() : tr("❌ %1").arg(error.message()));
        return;
    }
    Q_EMIT statusChanged(tr("Review the JSON below before confirming."));
}

void AgentHooksSection::confirmOp()
{
    try {
        m_installer.writeHooks();
    } catch (const HookError &error) {
        Q_EMIT statusChanged(tr("❌ Write error: %1").arg(error.message()));
        return;
    }
    setHooksInstalled(m_pendingInstall);
    closePreview();
    Q_EMIT statusChanged(m_pendingInstall ? m_words.installed : m_words.removed);
}

void AgentHooksSection::cancel()
{
    m_installer.cancel();
    closePreview();
}

void AgentHooksSection::setHooksInstalled(bool isInstalled)
{
    setLine(isInstalled ? m_words.installedLine : m_installer.label());
}

} // namespace tirlo
