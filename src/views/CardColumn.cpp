#include "CardColumn.h"

#include "CardMetrics.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"

#include <QVBoxLayout>

namespace tirlo::CardColumn {

void fill(QWidget *card, int left, std::initializer_list<Row> rows, int lift)
{
    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(left, 0, CardMetrics::contentRight, lift);
    column->setSpacing(0);
    column->addStretch();
    for (const Row &row : rows) {
        column->addSpacing(row.above);
        if (row.widget)
            column->addWidget(row.widget);
        else
            column->addLayout(row.layout);
    }
    column->addStretch();
}

QLayout *controls(std::initializer_list<QWidget *> widgets)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Style::controlSpacing);
    for (QWidget *widget : widgets)
        row->addWidget(widget);
    row->addStretch();
    return row;
}

TextLabel *title(const QString &text)
{
    auto *label = new TextLabel(Style::font(Style::titleSize, QFont::DemiBold), Style::primaryText);
    label->setLine(text);
    return label;
}

} // namespace tirlo::CardColumn
