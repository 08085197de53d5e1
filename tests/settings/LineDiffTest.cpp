#include "settings/LineDiff.h"

#include <gtest/gtest.h>

namespace tirlo {
namespace {

TEST(LineDiffTest, MarksWhatIsNewAndListsWhatIsGone)
{
    struct Row
    {
        const char *before;
        const char *after;
        LineDiff diff;
    };
    const Row rows[]{
        {"a\nb", "a\nb", {}},
        {"", "a\nb", {{0, 1}, {}}},
        {"a\nb", "", {{}, {"a", "b"}}},
        {"a\na\na", "a\na", {{}, {"a"}}},
        {"1\nx\n2\ny\n3", "x\nnew\ny\n3\n4", {{1, 4}, {"1", "2"}}},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(compareLines(QString::fromLatin1(row.before), QString::fromLatin1(row.after)),
                  row.diff)
            << row.before << "\n->\n"
            << row.after;
    }
}

TEST(LineDiffTest, AChangeBeyondMeasureIsTakenAsOne)
{
    QString before = QStringLiteral("head\n");
    QString after = before;
    for (int i = 0; i < 5000; ++i) {
        before += QStringLiteral("old %1\n").arg(i);
        after += QStringLiteral("new %1\n").arg(i);
    }
    const LineDiff diff
        = compareLines(before + QStringLiteral("tail"), after + QStringLiteral("tail"));
    EXPECT_EQ(diff.changed.size(), 5000);
    EXPECT_EQ(diff.changed.first(), 1);
    EXPECT_EQ(diff.removed.size(), 5000);
}

} // namespace
} // namespace tirlo
