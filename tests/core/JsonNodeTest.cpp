#include "core/json/JsonNode.h"

#include <gtest/gtest.h>

namespace tirlo {
namespace {

QByteArray rewritten(const QByteArray &text, JsonSlashes slashes = JsonSlashes::plain)
{
    const auto node = readJson(text);
    return node ? writeJson(*node, slashes) : QByteArrayLiteral("none");
}

TEST(JsonNodeTest, ValuesComeOutAsTheyWentIn)
{
    const QByteArray values[] = {
        "null",
        "true",
        "-0.0",
        "1E+400",
        "123456789012345678901234567890",
        R"("ünï · 在庫 · 🦊 · \"\\\n\u001f · half a pair \ud83e, and the other \udd8a")",
        "[\n  [],\n  {}\n]"};
    for (const QByteArray &value : values)
        EXPECT_EQ(rewritten(value), value);
    EXPECT_EQ(rewritten(R"("\ud83e\udd8a \u00fc \/")"), "\"🦊 ü /\"");
    EXPECT_EQ(rewritten(R"({"a/b": "c/d"})", JsonSlashes::escaped), "{\n  \"a\\/b\": \"c\\/d\"\n}");
}

TEST(JsonNodeTest, NamesAreSortedAndTheLastOfTwinsCounts)
{
    EXPECT_EQ(rewritten("\xef\xbb\xbf{\"b\":1,\r\n\t\"a\":{\"é\":[1],\"Z\":0},\"b\":3} "),
              "{\n  \"a\": {\n    \"Z\": 0,\n    \"é\": [\n      1\n    ]\n  },\n  \"b\": 3\n}");
}

TEST(JsonNodeTest, TheOrderOfTheTextAndTheDigitsOfItsNumbersAreKept)
{
    const JsonNode root = readJson(R"({"z": [], "a": 1, "10": 1.50, "2": [-18446744073709551617, 2],
                                       "é": null, "a": 3})")
                              .value_or(JsonNode());
    EXPECT_EQ(namesInOrder(root), QStringList({"z", "10", "2", "é", "a"}));
    EXPECT_EQ(root["a"].integer(), 3);
    EXPECT_EQ(root["2"].first().integerDigits(), "-18446744073709551617");
    EXPECT_EQ(root["2"].first().integer(), std::nullopt);
    EXPECT_EQ(root["10"].integerDigits(), std::nullopt);
    EXPECT_EQ(root["z"].first()["deeper"].first(), JsonNode());
    EXPECT_EQ(namesInOrder(root["z"]), QStringList());
}

TEST(JsonNodeTest, AnythingButOneJsonTextIsRefused)
{
    const QByteArray broken
        = R"(|{|{} {}|{}x|<html>|[1,]|[1 2]|{"a"}|{"a":}|{"a":1,}|01|1.|-|NaN|True|)"
          R"("\x"|"\u12g4"|"open)"
          "|// x\n{}|\"a\nb\"|\"\xff\"|{\"a\": \"\xff\"}";
    for (const QByteArray &text : broken.split('|'))
        EXPECT_FALSE(readJson(text)) << text.toStdString();
    EXPECT_FALSE(readJson(QByteArray("{}\0", 3)));
    EXPECT_FALSE(readJson(QByteArray(100000, '[')));
    EXPECT_FALSE(readJson(QByteArray(513, '[') + QByteArray(513, ']')));
    EXPECT_TRUE(readJson(QByteArray(512, '[') + QByteArray(512, ']')));
}

} // namespace
} // namespace tirlo
