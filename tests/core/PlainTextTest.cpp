#include "core/PlainText.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

TEST(PlainTextTest, MarksGoAndTextStays)
{
    const std::pair<const char *, const char *> rows[] = {
        {"# Done\n\n- **One** `file.c`\n- [two](http://x.org \"t\") _now_\n\n1. three",
         "Done One file.c two now three"},
        {"```sh\nrm -rf a_b_c\n```\n> quoted ~~gone~~", "rm -rf a_b_c quoted gone"},
        {"a <b>bold</b> &amp; 2 * 3 * 4 snake_case_name",
         "a <b>bold</b> & 2 * 3 * 4 snake_case_name"},
        {"![alt](file:///etc/passwd) <img src=x onerror=y>", "<img src=x onerror=y>"},
        {"\n\n \t", ""},
        {"x\u202Ey", "x\uFFFDy"},
    };
    for (const auto &[markdown, text] : rows)
        EXPECT_EQ(plainText(markdown), QString(text));
}

TEST(PlainTextTest, ALongOrHostileTextIsCutInNoTime)
{
    for (const char *piece : {"word ", "> ", "- ", "[", "![", "*a_", "`", "<", "|", "\\", "&#1;",
                              "👩‍👩‍👧"}) {
        QElapsedTimer timer;
        timer.start();
        EXPECT_LE(plainText(QString(piece).repeated(100'000)).size(), 241 * 64) << piece;
        EXPECT_LT(timer.elapsed(), 1000) << piece;
    }
    EXPECT_EQ(plainText(QString("word ").repeated(100)).size(), 241);
}

} // namespace
