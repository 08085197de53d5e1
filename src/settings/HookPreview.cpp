#include "HookPreview.h"

#include "LineDiff.h"
#include "MarkedLines.h"
#include "SettingsControls.h"
#include "hooks/installers/HookInstaller.h"
#include "ui/Style.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

namespace tirlo {

namespace {

constexpr int boxHeight = 140;
constexpr qsizetype mostRemovedLines = 4;

/// Tells in words what the marks tell.
QString summaryOf(const LineDiff &diff, bool laysOutAnew)
{
    QString summary = HookPreview::tr("New or changed lines: %1. Removed: %2.")
                          .arg(diff.changed.size())
                          .arg(diff.removed.size());
    if (laysOutAnew)
        summary += u' '
            + HookPreview::tr(
                       "Other entries keep their values, but their order and layout change.");
    return summary;
}

} // namespace

HookPreview::HookPreview(const QString &section, QWidget *parent)
    : QWidget(parent)
    , m_box(new MarkedLines(u'+', Style::success))
    , m_summary(SettingsControls::caption())
    , m_removed(new MarkedLines(u'−', Style::failure))
{
    m_box->setFixedHeight(boxHeight);
    m_removed->setAccessibleName(tr("Removed lines"));
    setFocusProxy(m_box);

    auto *confirm = SettingsControls::button(tr("Confirm & write"), section);
    auto *cancel = SettingsControls::button(tr("Cancel"), section);
    connect(confirm, &QPushButton::clicked, this, &HookPreview::confirmed);
    connect(cancel, &QPushButton::clicked, this, &HookPreview::cancelled);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(confirm);
    buttons->addWidget(cancel);
    buttons->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_box);
    column->addWidget(m_removed);
    column->addWidget(m_summary);
    column->addLayout(buttons);
}

void HookPreview::showChange(const QString &label, const HookChange &change)
{
    const LineDiff diff = compareLines(change.presentText, change.text);
    m_box->showText(change.text, diff.changed);
    m_box->setAccessibleName(tr("New content of %1").arg(label));
    m_summary->setText(summaryOf(diff, change.laysOutAnew));
    m_box->setAccessibleDescription(m_summary->text());

    QList<int> all(diff.removed.size());
    std::iota(all.begin(), all.end(), 0);
    m_removed->showText(diff.removed.join(u'\n'), all);
    m_removed->setVisible(!diff.removed.isEmpty());
    m_removed->setFixedLines(int(std::min(diff.removed.size(), mostRemovedLines)));
}

void HookPreview::clear()
{
    m_box->showText({}, {});
    m_removed->showText({}, {});
}

} // namespace tirlo
