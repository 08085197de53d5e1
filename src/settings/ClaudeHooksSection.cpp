#include "ClaudeHooksSection.h"

#include "SettingsControls.h"
#include "hooks/installers/ClaudeHooks.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace tirlo {

ClaudeHooksSection::ClaudeHooksSection(ClaudeHooks &installer, const QString &hookScriptPath)
    : HookSection(installer)
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

    connectButton(update, [this] { install(); });
}

void ClaudeHooksSection::refresh()
{
    setHookNeedsUpdate(m_installer.hooksNeedUpdate());
}

void ClaudeHooksSection::install()
{
    openPreview([this] { return m_installer.buildHooksData(); }, tr("❌ Write error: %1"));
}

void ClaudeHooksSection::uninstall()
{
    if (!writes([this] { m_installer.uninstallHooks(); }))
        return;
    // What was previewed would put back what has just been taken out.
    cancel();
    Q_EMIT statusChanged(tr("✓ Hooks removed."));
}

QString ClaudeHooksSection::showWritten()
{
    setHookNeedsUpdate(false);
    return tr("✓ Hooks installed in %1").arg(m_installer.label());
}

void ClaudeHooksSection::setHookNeedsUpdate(bool needsUpdate)
{
    m_outdated->setVisible(needsUpdate);
    setButtonsVisible(!needsUpdate);
}

} // namespace tirlo
