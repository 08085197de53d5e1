#include "core/Text.h"

#include <QList>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

TEST(TextTest, CharactersAreWhatAPersonSees)
{
    const QString family = QStringLiteral("👨‍👩‍👧‍👦");
    const QString accented = QStringLiteral("e\u0301");
    EXPECT_EQ(firstCharacters(family + family + "x", 1), family);
    EXPECT_EQ(firstCharacters(accented + accented, 1), accented);
    EXPECT_EQ(firstCharacters("", 3), "");
    EXPECT_EQ(firstCharacters("abc", 0), "");
    EXPECT_FALSE(hasMoreCharacters(family.repeated(60), 60));
    EXPECT_TRUE(hasMoreCharacters(family.repeated(60) + "x", 60));

    // Endless marks on one letter are cut.
    const QString pathological = "a" + QString(1'000'000, QChar(0x0301));
    EXPECT_LE(firstCharacters(pathological, 60).size(), 61 * 64);
}

TEST(TextTest, LastPathComponents)
{
    const QList<std::pair<QString, QString>> rows{
        {"/a/b/main.c", "main.c"},
        {"/a//", "a"},
        {"x", "x"},
        {"/", "/"},
        {"//", "/"},
        {"", ""},
        {"./..", ".."},
        {"/é/ 日本", " 日本"},
    };
    for (const auto &[path, expected] : rows)
        EXPECT_EQ(lastPathComponent(path), expected) << path.toStdString();
}

} // namespace
