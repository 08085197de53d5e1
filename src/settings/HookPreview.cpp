#include "HookPreview.h"

#include "SettingsControls.h"
#include "core/LineDiff.h"
#include "hooks/installers/HookInstaller.h"
#include "ui/MarkedLines.h"
#include "ui/Style.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tirlo {

namespace {

constexpr int boxHeight = 140;
constexpr qsizetype mostRemovedLines = 4;

const LineMark addedMark{u'+', Style::success};
const LineMark removedMark{u'−', Style::failure};

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
    , m_box(new MarkedLines)
    , m_summary(SettingsControls::caption())
    , m_removed(new MarkedLines)
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
    QMap<int, LineMark> added;
    for (const int line : diff.changed)
        added.insert(line, addedMark);
    m_box->showText(change.text, added);
    m_box->setAccessibleName(tr("New content of %1").arg(label));
    m_summary->setText(summaryOf(diff, change.laysOutAnew));
    m_box->setAccessibleDescription(m_summary->text());

    QMap<int, LineMark> removed;
    for (int line = 0; line < diff.removed.size(); ++line)
        removed.insert(line, removedMark);
    m_removed->showText(diff.removed.join(u'\n'), removed);
    m_removed->setVisible(!diff.removed.isEmpty());
    m_removed->setFixedLines(int(std::min(diff.removed.size(), mostRemovedLines)));
}

void HookPreview::clear()
{
    m_box->showText({}, {});
    m_removed->showText({}, {});
}

} // namespace tirlo
