#include "core/LineDiff.h"

#include <gtest/gtest.h>

namespace tirlo {
namespace {

TEST(LineDiffTest, MarksWhatIsNewAndListsWhatIsGone)
{
    EXPECT_EQ(compareLines("a\nb", "a\nb"), (LineDiff{{}, {}}));
    EXPECT_EQ(compareLines("", "a\nb"), (LineDiff{{0, 1}, {}}));
    EXPECT_EQ(compareLines("a\nb", ""), (LineDiff{{}, {"a", "b"}}));
    EXPECT_EQ(compareLines("a\na\na", "a\na"), (LineDiff{{}, {"a"}}));
    EXPECT_EQ(compareLines("1\nx\n2\ny\n3", "x\nnew\ny\n3\n4"), (LineDiff{{1, 4}, {"1", "2"}}));

    using Kind = DiffLine::Kind;
    // Binary text has lines as well.
    const QString binary = QString::fromLatin1("\0\x01\xff\n\x7f\0", 6);
    EXPECT_EQ(diffLines(binary, binary + '\1'),
              (QList<DiffLine>{{Kind::kept, binary.first(3)},
                               {Kind::removed, binary.sliced(4)},
                               {Kind::added, binary.sliced(4) + '\1'}}));
    EXPECT_EQ(diffLines("head\nold\ntail", "head\nnew\nmore\ntail"),
              (QList<DiffLine>{{Kind::kept, "head"},
                               {Kind::removed, "old"},
                               {Kind::added, "new"},
                               {Kind::added, "more"},
                               {Kind::kept, "tail"}}));
}

TEST(LineDiffTest, AChangeBeyondMeasureIsTakenAsOne)
{
    QString before = "head\n";
    QString after = before;
    for (int i = 0; i < 20000; ++i) {
        before += "old " + QString::number(i) + '\n';
        after += "new " + QString::number(i) + '\n';
    }
    const LineDiff diff = compareLines(before + "tail", after + "tail");
    EXPECT_EQ(diff.changed.size(), 20000);
    EXPECT_EQ(diff.changed.first(), 1);
    EXPECT_EQ(diff.removed.size(), 20000);
}

} // namespace
} // namespace tirlo
