#include "integrations/ServiceAnswers.h"

#include <gtest/gtest.h>

#include <limits>

namespace tirlo {
namespace {

TEST(ServiceAnswersTest, ReadsInternetDatesAndNothingElse)
{
    const struct
    {
        const char *text;
        qint64 milliseconds;
    } rows[]{{"2026-03-14T09:26:53Z", 1773480413000},
             {"2026-03-14T09:26:53.5Z", 1773480413500},
             {"2026-03-14T09:26:53.589793238462643383Z", 1773480413589},
             {"2026-03-14T10:26:53.589+01:00", 1773480413589},
             {"2026-03-14T03:56:53-0530", 1773480413000},
             {"1969-12-31T23:59:59.250Z", -750},
             {"", -1},
             {"2026-03-14T09:26:53", -1},
             {"2026-02-29T09:26:53Z", -1},
             {"2026-03-14T24:00:00Z", -1},
             {"2026-03-14T09:26:53+15:00", -1},
             {"2026-03-14T09:26:53Z\n", -1}};
    for (const auto &row : rows) {
        const auto date = isoDate(QString::fromLatin1(row.text));
        EXPECT_EQ(date ? date->toMSecsSinceEpoch() : -1, row.milliseconds) << row.text;
    }
}

TEST(ServiceAnswersTest, KeepsNumbersWithinWhatDatesAndSumsCanHold)
{
    EXPECT_EQ(dateSinceEpoch(-0.75).toMSecsSinceEpoch(), -750);
    EXPECT_TRUE(dateSinceEpoch(-1e300).isValid());
    EXPECT_GT(dateSinceEpoch(1e300), dateSinceEpoch(1e11));

    using Limits = std::numeric_limits<qint64>;
    EXPECT_EQ(boundedSum(Limits::max(), 1), Limits::max());
    EXPECT_EQ(boundedSum(Limits::min(), -1), Limits::min());
}

} // namespace
} // namespace tirlo
