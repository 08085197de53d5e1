#pragma once

#include "ui/TextLabel.h"

#include <QString>

#include <initializer_list>

class QLayout;

/// The column in which most cards stand: text and controls at the mascot's right.
namespace tirlo::CardColumn {

/// One line of the column, and the room in points above it; that of a hidden widget goes with it.
struct Row
{
    Row(int roomAbove, QWidget *rowWidget)
        : above(roomAbove)
        , widget(rowWidget)
    {
    }
    Row(int roomAbove, QLayout *rowLayout)
        : above(roomAbove)
        , layout(rowLayout)
    {
    }

    int above = 0;
    QWidget *widget = nullptr;
    QLayout *layout = nullptr;
};

/// Lays the rows out around the card's middle, `left` points from its left edge.
///
/// `lift` points raise them, where their looks ask for it.
void fill(QWidget *card, int left, std::initializer_list<Row> rows, int lift = 0);

/// A row of controls from the left.
[[nodiscard]] QLayout *controls(std::initializer_list<QWidget *> widgets);

/// The strong line that says what a card is about.
[[nodiscard]] TextLabel *title(const QString &text = {});

} // namespace tirlo::CardColumn
