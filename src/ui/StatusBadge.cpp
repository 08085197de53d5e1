#include "StatusBadge.h"

#include "ColorDot.h"
#include "Style.h"
#include "TextLabel.h"

#include <QHBoxLayout>

namespace tirlo {

StatusBadge::StatusBadge(const QString &label, bool ok, QWidget *parent)
    : QWidget(parent)
{
    auto *dot = new ColorDot;
    dot->setColor(ok ? Style::success : Style::failure);
    auto *text = new TextLabel(Style::font(Style::captionSize), Style::secondaryText);
    text->setLine(label);
    // Not by its colour alone.
    text->setAccessibleDescription(ok ? QStringLiteral("OK") : QStringLiteral("not OK"));

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::headSpacing);
    row->addWidget(dot);
    row->addWidget(text);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

} // namespace tirlo
