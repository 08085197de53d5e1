#include "HookSection.h"

#include "HookPreview.h"
#include "SettingsControls.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tirlo {

HookSection::HookSection(const QString &title)
    : QGroupBox(title)
    , m_line(SettingsControls::caption())
    , m_install(SettingsControls::button(tr("Install hooks"), title))
    , m_uninstall(SettingsControls::button(tr("Uninstall"), title))
    , m_preview(new HookPreview)
    , m_column(new QVBoxLayout(this))
{
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_install);
    buttons->addWidget(m_uninstall);
    buttons->addStretch();
    m_column->addWidget(m_line);
    m_column->addLayout(buttons);
    m_column->addWidget(m_preview);
    m_preview->hide();

    connect(m_install, &QPushButton::clicked, this, &HookSection::installPressed);
    connect(m_uninstall, &QPushButton::clicked, this, &HookSection::uninstallPressed);
    connect(m_preview, &HookPreview::confirmed, this, &HookSection::confirmPressed);
    connect(m_preview, &HookPreview::cancelled, this, &HookSection::cancelPressed);
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

void HookSection::openPreview(const HookInstaller &installer, const QString &text)
{
    m_preview->showChange(installer, text);
    m_preview->show();
    m_preview->setFocus();
    Q_EMIT previewOpened(m_preview);
}

void HookSection::closePreview()
{
    if (m_preview->isHidden())
        return;
    m_install->setFocus();
    m_preview->hide();
    m_preview->clear();
}

} // namespace tirlo
