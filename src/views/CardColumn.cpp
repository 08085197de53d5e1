#include "CardColumn.h"

#include "CardMetrics.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"

#include <QSpacerItem>
#include <QVBoxLayout>

namespace tirlo::CardColumn {

namespace {

/// The room above a widget, which goes with it.
class Gap final : public QSpacerItem
{
public:
    Gap(int room, const QWidget &widget)
        : QSpacerItem(0, room, QSizePolicy::Minimum, QSizePolicy::Fixed)
        , m_widget(widget)
    {
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        return m_widget.isHidden() ? QSize(0, 0) : QSpacerItem::sizeHint();
    }
    [[nodiscard]] QSize minimumSize() const override { return sizeHint(); }
    [[nodiscard]] QSize maximumSize() const override
    {
        return {QLAYOUTSIZE_MAX, sizeHint().height()};
    }

private:
    const QWidget &m_widget;
};

} // namespace

void fill(QWidget *card, int left, std::initializer_list<Row> rows, int lift)
{
    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(left, 0, CardMetrics::contentRight, lift);
    column->setSpacing(0);
    column->addStretch();
    for (const Row &row : rows) {
        if (row.widget) {
            column->addItem(new Gap(row.above, *row.widget));
            column->addWidget(row.widget);
        } else {
            column->addSpacing(row.above);
            column->addLayout(row.layout);
        }
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
