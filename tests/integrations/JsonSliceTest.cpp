#include "integrations/JsonSlice.h"

#include <gtest/gtest.h>

namespace tirlo {
namespace {

using Kind = JsonSlice::Kind;

TEST(JsonSliceTest, KeepsTheOrderOfMembersAndTheDigitsOfNumbers)
{
    const QByteArray document
        = "\xEF\xBB\xBF \n{ \"z\" : [ ] ,\"a\":{\"x\":\"}\\\"]\"},\t\"10\":1.50,"
          "\"2\" :18446744073709551617,\"\\u00e9\\n\":null ,\"a\":true} \n";
    const JsonSlice root = JsonSlice::of(document);
    QStringList seen;
    for (const auto &[key, value] : root.members())
        seen += key + QLatin1Char('=') + value.source();
    EXPECT_EQ(seen,
              QStringList({"z=[ ]", "a={\"x\":\"}\\\"]\"}", "10=1.50", "2=18446744073709551617",
                           "é\n=null", "a=true"}));
    EXPECT_EQ(root["a"].kind(), Kind::literal) << "the last of its name";
    EXPECT_EQ(root["2"].integerDigits(), "18446744073709551617");
    EXPECT_EQ(root["10"].integerDigits(), std::nullopt);
    EXPECT_EQ(root["10"].kind(), Kind::number);
    EXPECT_TRUE(root["z"].isArray());
    EXPECT_TRUE(root["z"].elements().isEmpty());
    EXPECT_EQ(root["none"]["deeper"]["still"].kind(), Kind::none);
    EXPECT_EQ(root["none"].text(), std::nullopt);
}

TEST(JsonSliceTest, ReadsElementsAndTexts)
{
    const QByteArray document
        = R"(["plain é", "quote \" slash \\", "\ud83e\ude91", [[], {}], -7, "\\"])";
    const QList<JsonSlice> elements = JsonSlice::of(document).elements();
    ASSERT_EQ(elements.size(), 6);
    EXPECT_EQ(elements[0].text(), "plain é");
    EXPECT_EQ(elements[1].text(), "quote \" slash \\");
    EXPECT_EQ(elements[2].text(), "🪑");
    EXPECT_EQ(elements[3].elements().size(), 2);
    EXPECT_EQ(elements[4].integerDigits(), "-7");
    EXPECT_EQ(elements[5].text(), "\\");
    EXPECT_EQ(elements[4].text(), std::nullopt);
    EXPECT_TRUE(JsonSlice::of(document).members().isEmpty());
}

TEST(JsonSliceTest, FindsNothingInWhatIsNoJson)
{
    for (const QByteArray &document :
         {QByteArray(), QByteArray("<html>"), QByteArray("{"), QByteArray("[1,"), QByteArray("{}x"),
          QByteArray("{\"a\": \"\xff\"}"), QByteArray(5000, '['), QByteArray("[1]]"),
          QByteArray("7"), QByteArray("null")}) {
        EXPECT_EQ(JsonSlice::of(document).kind(), Kind::none) << document.left(10).constData();
    }
    EXPECT_EQ(JsonSlice::of("{}").kind(), Kind::object);
    EXPECT_EQ(JsonSlice::of(" []\n").kind(), Kind::array);
}

} // namespace
} // namespace tirlo
