#include "integrations/JsonSlice.h"

#include <gtest/gtest.h>

namespace tirlo {
namespace {

using Kind = JsonSlice::Kind;

TEST(JsonSliceTest, KeepsTheOrderOfMembersAndTheDigitsOfNumbers)
{
    const QByteArray document
        = "\xEF\xBB\xBF \n{ \"z\" : [ ] ,\"a\":{\"x\":\"}\\\"]\"},\t\"10\":1.50,"
          "\"2\" :[-18446744073709551617 , 2],\"\\u00e9\\\\\":null ,\"a\":true} \n";
    const JsonSlice root = JsonSlice::of(document);
    QStringList seen;
    for (const auto &[key, value] : root.members())
        seen += key + QLatin1Char('=') + value.source();
    EXPECT_EQ(seen,
              QStringList({"z=[ ]", "a={\"x\":\"}\\\"]\"}", "10=1.50",
                           "2=[-18446744073709551617 , 2]", "é\\=null", "a=true"}));
    EXPECT_EQ(root["a"].kind(), Kind::literal) << "the last of its name";
    EXPECT_EQ(root["2"].first().integerDigits(), "-18446744073709551617");
    EXPECT_EQ(root["2"].elements().size(), 2);
    EXPECT_EQ(root["10"].integerDigits(), std::nullopt);
    EXPECT_EQ(root["z"].first().kind(), Kind::none);
    EXPECT_EQ(root["none"]["deeper"].text(), std::nullopt);

    for (const QByteArray &wrong : {QByteArray(), QByteArray("<html>"), QByteArray("{}x"),
                                    QByteArray("{\"a\": \"\xff\"}"), QByteArray(5000, '[')})
        EXPECT_EQ(JsonSlice::of(wrong).kind(), Kind::none) << wrong.left(10).constData();
}

} // namespace
} // namespace tirlo
