#include "core/HiddenMarks.h"

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

TEST(HiddenMarksTest, WhatIsNotSeenShowsAsAMarkAndLettersStay)
{
    // "!" stands for a mark; texts without any come out as they are.
    const char16_t *const rows[][2] = {
        {u"a\r\nb\tc\n", u"a\nb\tc\n"},
        {u"a\rb\vc\x85\x1B\u2028", u"a!b!c!!!"},
        {u"rm\u00AD \u200B\u202E\u2066\u061C", u"rm! !!!!"},
        {u"\u2060\u2061\u2064\u180E\uFEFF\u3164\u115F\u1160\uFFA0\u2800", u"!!!!!!!!!!"},
        {u"a\uFDD0b\uFDD1\uFDEF", u"a!b!!"},
        {u"a\U000E0001\U000E0041\U000E007Fb", u"a!!!b"},
        // Joiners and selectors stay where they form letters, and are seen where they hide.
        {u"r\u200Dm r\u200Cm \u200D", u"r!m r!m !"},
        {u"\U0001F469\u200D\u200D\U0001F467", u"\U0001F469!!\U0001F467"},
        {u"a\uFE0Fb\U000E0100 \u2764\uFE0F\uFE0F", u"a!b! \u2764\uFE0F!"},
        {u"\u2764\uFE0F\u200D\U0001F525 1\uFE0F\u20E3 \u845B\U000E0100", nullptr},
        {u"\u0645\u06CC\u200C\u062E\u0648\u0627\u0647\u0645 \u05E9\u05DC\u05D5\u05DD", nullptr},
        {u"e\u0301 \U0001F469\u200D\U0001F469\u200D\U0001F467 \u00A9\uFE0F", nullptr},
    };
    for (const auto &[text, marked] : rows) {
        const QString given = QString::fromUtf16(text);
        const QString shown
            = marked ? QString::fromUtf16(marked).replace('!', QChar(0xFFFD)) : given;
        EXPECT_EQ(withoutHiddenMarks(given), shown);
        EXPECT_EQ(withoutHiddenMarks(shown), shown);
    }
    EXPECT_EQ(withoutHiddenMarks(QString(QChar(0xD83D)) + "a"), "\uFFFDa");
}

} // namespace
