#include "ui/CodeBlock.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"
#include "ui/TextLine.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QToolTip>

#include <gtest/gtest.h>

namespace tirlo {

namespace {

TextLabel *makeLabel(QWidget &parent, const QString &text, int width)
{
    auto *label = new TextLabel(Style::font(Style::headSize), Qt::white, &parent);
    label->setLine(text);
    label->resize(width, Style::lineHeight);
    return label;
}

/// What the widget says when the pointer rests on it; empty for nothing.
QString toolTipOf(QWidget &widget)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), widget.mapToGlobal(QPoint(1, 1)));
    const QString former = QStringLiteral("former");
    QToolTip::showText(QPoint(), former);
    QCoreApplication::sendEvent(&widget, &event);
    const QString shown = QToolTip::text();
    return shown == former ? QString() : shown;
}

TEST(ForeignTextTest, ALineHasNoBreaksAndNothingInvisibleThatReordersIt)
{
    using TextLine::displayable;
    EXPECT_EQ(displayable(QStringLiteral("a\nb\r\nc\td")), QStringLiteral("a⏎b⏎c d"));
    EXPECT_EQ(displayable(QStringLiteral("a\u2028b\u0007")), QStringLiteral("a⏎b\uFFFD"));
    EXPECT_EQ(displayable(QStringLiteral("x\u202Ecod.exe")), QStringLiteral("x\uFFFDcod.exe"));
    EXPECT_EQ(displayable(QStringLiteral("שלום 👩‍👩‍👧")),
              QStringLiteral("שלום 👩‍👩‍👧"));
}

TEST(ForeignTextTest, AVeryLongLineKeepsBothEndsAndWholeCharacters)
{
    const QString rockets = QStringLiteral("🚀").repeated(500'000);
    for (const QString &text : {QStringLiteral("a") + rockets, rockets + QStringLiteral("a"),
                                QStringLiteral("ab") + rockets}) {
        const QString line = TextLine::displayable(text);
        EXPECT_LT(line.size(), 1000);
        EXPECT_TRUE(line.isValidUtf16());
        EXPECT_EQ(line.first(1), text.first(1));
        EXPECT_EQ(line.last(1), text.last(1));
    }
}

TEST(ForeignTextTest, MarkupIsShownAndNotInterpreted)
{
    QWidget window;
    const QString hostile = QStringLiteral("<img src=x><h1>Allow</h1>&amp;");
    TextLabel *label = makeLabel(window, hostile, 60);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->height(), Style::lineHeight);
    EXPECT_EQ(label->sizeHint().width(),
              int(std::ceil(QFontMetricsF(label->font(), label).horizontalAdvance(hostile))));

    const QString toolTip = toolTipOf(*label);
    EXPECT_TRUE(toolTip.contains(hostile.toHtmlEscaped())) << toolTip.toStdString();
    EXPECT_FALSE(toolTip.contains(QStringLiteral("<img")));
}

TEST(ForeignTextTest, ATextThatFitsHasNoToolTip)
{
    QWidget window;
    EXPECT_FALSE(toolTipOf(*makeLabel(window, QStringLiteral("a long enough text"), 20)).isEmpty());
    EXPECT_TRUE(toolTipOf(*makeLabel(window, QStringLiteral("short"), 300)).isEmpty());
}

TEST(ForeignTextTest, ACodeBlockElidesInItsMiddle)
{
    QWidget window;
    CodeBlock code(&window);
    code.setLine(QStringLiteral("start ") + QString(200, u'x') + QStringLiteral(" end"));
    code.resize(200, code.sizeHint().height());
    const QFontMetricsF metrics(code.font(), &code);
    const QString shown = TextLine::elided(code.text(), metrics, Qt::ElideMiddle, 184);
    EXPECT_TRUE(shown.startsWith(QStringLiteral("start")));
    EXPECT_TRUE(shown.endsWith(QStringLiteral("end")));
    EXPECT_TRUE(toolTipOf(code).contains(QStringLiteral(" end")));
}

} // namespace

} // namespace tirlo
