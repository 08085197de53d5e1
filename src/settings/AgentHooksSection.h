#pragma once

#include "HookSection.h"

namespace tirlo {

class GuardedHooks;

/// The section of an agent whose removal is previewed too.
class AgentHooksSection final : public HookSection
{
    Q_OBJECT

public:
    /// The installer outlives the section.
    explicit AgentHooksSection(GuardedHooks &installer);

    void refresh() override;

protected:
    void install() override { triggerPreview(true); }
    void uninstall() override { triggerPreview(false); }
    QString showWritten() override;

private:
    void triggerPreview(bool install);
    void setHooksInstalled(bool isInstalled);

    GuardedHooks &m_installer;
    bool m_pendingInstall = false;
};

} // namespace tirlo
