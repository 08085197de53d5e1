#pragma once

#include "HookSection.h"

namespace tirlo {

class GuardedHooks;

/// The words of one agent's section.
struct AgentHooksWords
{
    QString title;
    /// The line while the hooks are in, with what the user has still to do.
    QString installedLine;
    QString installed;
    QString removed;
};

/// The section of an agent whose removal is previewed too.
class AgentHooksSection final : public HookSection
{
    Q_OBJECT

public:
    /// The installer outlives the section.
    AgentHooksSection(GuardedHooks &installer, AgentHooksWords words);

    void refresh() override;

protected:
    void install() override { triggerPreview(true); }
    void uninstall() override { triggerPreview(false); }
    QString showWritten() override;

private:
    void triggerPreview(bool install);
    void setHooksInstalled(bool isInstalled);

    GuardedHooks &m_installer;
    const AgentHooksWords m_words;
    bool m_pendingInstall = false;
};

} // namespace tirlo
