#include "HookSection.h"

#include "HookPreview.h"
#include "SettingsControls.h"
#include "hooks/installers/HookError.h"
#include "hooks/installers/HookInstaller.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tirlo {

HookSection::HookSection(HookInstaller &installer)
    : QGroupBox(tr("%1 Hooks").arg(installer.agent().name))
    , m_installer(installer)
    , m_line(SettingsControls::caption())
    , m_install(SettingsControls::button(tr("Install hooks"), title()))
    , m_uninstall(SettingsControls::button(tr("Uninstall"), title()))
    , m_preview(new HookPreview(title()))
    , m_column(new QVBoxLayout(this))
    , m_opener(m_install)
{
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_install);
    buttons->addWidget(m_uninstall);
    buttons->addStretch();
    m_column->addWidget(m_line);
    m_column->addLayout(buttons);
    m_column->addWidget(m_preview);
    m_preview->hide();

    connectButton(m_install, [this] { install(); });
    connectButton(m_uninstall, [this] { uninstall(); });
    connect(m_preview, &HookPreview::confirmed, this, &HookSection::confirm);
    connect(m_preview, &HookPreview::cancelled, this, &HookSection::cancel);
}

void HookSection::setLine(const QString &text)
{
    m_line->setText(text);
}

void HookSection::addBelowLine(QWidget *widget)
{
    m_column->insertWidget(m_column->indexOf(m_line) + 1, widget);
}

void HookSection::setButtonsVisible(bool isVisible)
{
    m_install->setVisible(isVisible);
    m_uninstall->setVisible(isVisible);
}

void HookSection::connectButton(QPushButton *button, const std::function<void()> &operation)
{
    connect(button, &QPushButton::clicked, this, [this, button, operation] {
        m_opener = button;
        operation();
    });
}

void HookSection::openPreview(const std::function<HookChange()> &build, const QString &failure)
{
    try {
        m_preview->showChange(m_installer.label(), build());
    } catch (const HookError &error) {
        closePreview();
        const bool isMereNote = error.domain() == HookError::Domain::tirloNoop;
        Q_EMIT statusChanged(isMereNote ? error.message() : failure.arg(error.message()));
        return;
    }
    m_preview->show();
    m_preview->setFocus();
    Q_EMIT previewOpened(m_preview);
    Q_EMIT statusChanged(tr("Review the JSON below before confirming."));
}

void HookSection::cancel()
{
    m_installer.cancel();
    closePreview();
}

bool HookSection::writes(const std::function<void()> &write)
{
    try {
        write();
        return true;
    } catch (const HookError &error) {
        Q_EMIT statusChanged(tr("❌ Write error: %1").arg(error.message()));
        return false;
    }
}

void HookSection::confirm()
{
    if (!writes([this] { m_installer.writeHooks(); }))
        return;
    const QString words = showWritten();
    closePreview();
    Q_EMIT statusChanged(words);
}

void HookSection::closePreview()
{
    if (m_preview->isHidden())
        return;
    // The button that offered an update goes with it.
    (m_opener->isVisibleTo(this) ? m_opener : m_install)->setFocus();
    m_preview->hide();
    m_preview->clear();
}

} // namespace tirlo
