#include "hooks/installers/JsonNode.h"

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
        "false",
        "0",
        "-0",
        "-0.0",
        "1.50",
        "1E+400",
        "2e-7",
        "9007199254740993",
        "123456789012345678901234567890",
        "3.14159265358979323846264338327950288",
        R"("")",
        R"("ünï · 在庫 · 🦊 · עברית")",
        R"("\"\\\b\f\n\r\t\u0000\u001f")",
        R"("half a pair \ud83e, and the other \udd8a")",
        "\"\x7f and \xc2\x80\"",
        "[]",
        "{}",
        "[\n  [],\n  {}\n]",
    };
    for (const QByteArray &value : values)
        EXPECT_EQ(rewritten(value), value);
    EXPECT_EQ(rewritten(R"("\ud83e\udd8a \u00fc \/")"), "\"🦊 ü /\"");
    EXPECT_EQ(rewritten(R"({"a/b": "c/d"})", JsonSlashes::escaped), "{\n  \"a\\/b\": \"c\\/d\"\n}");
}

TEST(JsonNodeTest, NamesAreSortedAndTheLastOfTwinsCounts)
{
    EXPECT_EQ(rewritten("\xef\xbb\xbf{\"b\":1,\r\n\t\"a\":{\"é\":[1,{\"z\":2}],\"Z\":0},\"b\":3} "),
              R"({
  "a": {
    "Z": 0,
    "é": [
      1,
      {
        "z": 2
      }
    ]
  },
  "b": 3
})");
}

TEST(JsonNodeTest, AnythingButOneJsonTextIsRefused)
{
    const QByteArray texts[] = {
        "",
        " ",
        "{",
        "{}}",
        "{} {}",
        "[1,]",
        "[,]",
        "[1 2]",
        R"({"a"})",
        R"({"a":})",
        R"({a:1})",
        "{'a':1}",
        R"({"a":1,})",
        "// x\n{}",
        "01",
        "1.",
        ".5",
        "+1",
        "1e",
        "-",
        "NaN",
        "nul",
        "True",
        R"("\x")",
        R"("\u12g4")",
        R"("\u12)",
        "\"a\nb\"",
        "\"open",
        "\"\xff\"",
        "{}\xc3",
        "{}\xc0\x80",
        QByteArray("{}\0", 3),
        QByteArray(100000, '['),
    };
    for (const QByteArray &text : texts)
        EXPECT_FALSE(readJson(text)) << text.left(40).toStdString();
    EXPECT_TRUE(readJson(QByteArray(512, '[') + QByteArray(512, ']')));
    EXPECT_FALSE(readJson(QByteArray(513, '[') + QByteArray(513, ']')));
}

} // namespace
} // namespace tirlo
