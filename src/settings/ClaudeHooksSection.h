#pragma once

#include "HookSection.h"

namespace tirlo {

class ClaudeHooks;

/// The section of Claude Code, which also says when an installed hook is outdated.
class ClaudeHooksSection final : public HookSection
{
    Q_OBJECT

public:
    /// The installer outlives the section; `hookScriptPath` is shown.
    ClaudeHooksSection(ClaudeHooks &installer, const QString &hookScriptPath);

    void refresh() override;

protected:
    void install() override;
    void uninstall() override;
    QString showWritten() override;

private:
    void setHookNeedsUpdate(bool needsUpdate);

    ClaudeHooks &m_installer;
    QWidget *const m_outdated;
};

} // namespace tirlo
