#include "ClaudeHooksSection.h"

#include "SettingsControls.h"
#include "hooks/installers/ClaudeHooks.h"
#include "hooks/installers/HookError.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace tirlo {

ClaudeHooksSection::ClaudeHooksSection(ClaudeHooks &installer, const QString &hookScriptPath)
    : HookSection(tr("Claude Code Hooks"))
    , m_installer(installer)
    , m_outdated(new QWidget)
{
    setLine(tr("qv-hook : %1").arg(hookScriptPath));

    auto *icon = new QLabel;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
    icon->setAccessibleName(tr("Warning"));
    auto *warning = new QLabel(tr("Hook timeout outdated — update to fix approvals"));
    warning->setWordWrap(true);
    QPushButton *update = SettingsControls::button(tr("Update hooks"), title());
    auto *rows = new QGridLayout(m_outdated);
    rows->setContentsMargins({});
    rows->setColumnStretch(1, 1);
    rows->addWidget(icon, 0, 0);
    rows->addWidget(warning, 0, 1);
    rows->addWidget(update, 1, 0, 1, 2, Qt::AlignLeft);
    addBelowLine(m_outdated);

    connect(update, &QPushButton::clicked, this, &ClaudeHooksSection::installHooks);
    connect(this, &HookSection::installPressed, this, &ClaudeHooksSection::installHooks);
    connect(this, &HookSection::uninstallPressed, this, &ClaudeHooksSection::uninstallHooks);
    connect(this, &HookSection::confirmPressed, this, &ClaudeHooksSection::confirmInstall);
    connect(this, &HookSection::cancelPressed, this, &ClaudeHooksSection::cancel);
}

void ClaudeHooksSection::refresh()
{
    setHookNeedsUpdate(m_installer.hooksNeedUpdate());
}

void ClaudeHooksSection::installHooks()
{
    openPreview(m_installer, QString::fromUtf8(m_installer.buildHooksData()));
    Q_EMIT statusChanged(tr("Review the JSON below before confirming."));
}

void ClaudeHooksSection::confirmInstall()
{
    try {
        m_installer.writeHooks();
    } catch (const HookError &error) {
        Q_EMIT statusChanged(tr("❌ Write error: %1").arg(error.message()));
        return;
    }
    setHookNeedsUpdate(false);
    closePreview();
    Q_EMIT statusChanged(tr("✓ Hooks installed in ~/.claude/settings.json"));
}

void ClaudeHooksSection::uninstallHooks()
{
    try {
        m_installer.uninstallHooks();
    } catch (const HookError &error) {
        Q_EMIT statusChanged(tr("❌ Write error: %1").arg(error.message()));
        return;
    }
    Q_EMIT statusChanged(tr("✓ Hooks removed."));
}

void ClaudeHooksSection::cancel()
{
    m_installer.cancel();
    closePreview();
}

void ClaudeHooksSection::setHookNeedsUpdate(bool needsUpdate)
{
    m_outdated->setVisible(needsUpdate);
    setButtonsVisible(!needsUpdate);
}

} // namespace tirlo
