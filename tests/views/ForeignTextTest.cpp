#include "ui/OptionButton.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "ui/TextLine.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

/// What the widget says when the pointer rests on it; empty for nothing.
QString toolTipOf(QWidget &widget)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), widget.mapToGlobal(QPoint(1, 1)));
    QToolTip::showText(QPoint(), "former");
    QCoreApplication::sendEvent(&widget, &event);
    const QString shown = QToolTip::text();
    return shown == "former" ? QString() : shown;
}

TEST(ForeignTextTest, ALineHasNoBreaksAndNothingInvisibleThatReordersIt)
{
    for (const auto &[text, shown] : {
             std::pair("a\nb\r\nc\td", "a⏎b⏎c d"),
             {"a\u2028b\u0007", "a⏎b\uFFFD"},
             {"x\u202Ecod.exe", "x\uFFFDcod.exe"},
             {"שלום 👩‍👩‍👧", "שלום 👩‍👩‍👧"},
         })
        EXPECT_EQ(TextLine::displayable(text), shown);
}

TEST(ForeignTextTest, AVeryLongLineKeepsBothEndsAndWholeCharacters)
{
    const QString rockets = QString("🚀").repeated(500'000);
    for (const QString &text : {"a" + rockets, rockets + "a", "ab" + rockets}) {
        const QString line = TextLine::displayable(text);
        EXPECT_LT(line.size(), 1000);
        EXPECT_TRUE(line.isValidUtf16());
        EXPECT_EQ(line.first(1), text.first(1));
        EXPECT_EQ(line.last(1), text.last(1));
    }
}

TEST(ForeignTextTest, WhatIsSpokenAndWhatIsCopiedHoldsNothingInvisibleEither)
{
    TextLabel label(Style::font(Style::headSize), Qt::white);
    label.setLine("x\u202Ey");
    const OptionButton option("x\u202Ey", "x\u202Ey", false);
    for (const QString &told :
         {label.text(), option.accessibleName(), option.accessibleDescription()})
        EXPECT_EQ(told, "x\uFFFDy");
}

TEST(ForeignTextTest, MarkupIsShownAndNotInterpreted)
{
    const QString hostile = "<img src=x><h1>Allow</h1>&amp;";
    TextLabel label(Style::font(Style::headSize), Qt::white, nullptr);
    label.setLine(hostile);
    label.resize(60, Style::lineHeight);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(label.sizeHint().width(),
              int(std::ceil(QFontMetricsF(label.font(), &label).horizontalAdvance(hostile))));
    const QString toolTip = toolTipOf(label);
    EXPECT_TRUE(toolTip.contains(hostile.toHtmlEscaped())) << toolTip.toStdString();
    EXPECT_FALSE(toolTip.contains("<img"));

    label.resize(600, Style::lineHeight);
    EXPECT_EQ(toolTipOf(label), "") << "a text that fits has none";
}

} // namespace
