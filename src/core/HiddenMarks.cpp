#include "HiddenMarks.h"

#include <algorithm>
#include <array>

namespace tirlo {

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

/// Nothing of these is seen, and some change the order of what stands around them.
constexpr std::array hiddenRanges{
    Range{0x00AD, 0x00AD},   // soft hyphen
    Range{0x034F, 0x034F},   // grapheme joiner
    Range{0x061C, 0x061C},   // Arabic letter mark
    Range{0x115F, 0x1160},   // Hangul fillers
    Range{0x17B4, 0x17B5},   // Khmer inherent vowels
    Range{0x180E, 0x180E},   // Mongolian vowel separator
    Range{0x200B, 0x200B},   // zero-width space
    Range{0x200E, 0x200F},   // direction marks
    Range{0x2028, 0x202E},   // line and paragraph separators, embeddings and overrides
    Range{0x2060, 0x206F},   // word joiner, invisible operators, isolates, former format marks
    Range{0x2800, 0x2800},   // braille blank
    Range{0x3164, 0x3164},   // Hangul filler
    Range{0xFDD0, 0xFDEF},   // no characters: some break lines where they stand
    Range{0xFEFF, 0xFEFF},   // zero-width no-break space
    Range{0xFFA0, 0xFFA0},   // half-width Hangul filler
    Range{0xFFF0, 0xFFFB},   // unassigned ones and annotations
    Range{0x1BCA0, 0x1BCA3}, // shorthand marks
    Range{0x1D173, 0x1D17A}, // musical marks
    Range{0xE0000, 0xE00FF}, // tags
    Range{0xE01F0, 0xE0FFF}, // unassigned ones
};

/// The first character that can need one of the tables.
constexpr char32_t firstOdd = 0x00AD;
/// Where the scripts begin that write with joiners.
constexpr char32_t firstJoined = 0x0590;
constexpr char32_t keycap = 0x20E3;
constexpr char32_t replacement = QChar::ReplacementCharacter;

bool isHidden(char32_t c)
{
    const auto holds = [c](Range range) { return c >= range.first && c <= range.last; };
    return c >= firstOdd && std::ranges::any_of(hiddenRanges, holds);
}

bool isJoiner(char32_t c)
{
    return c == 0x200C || c == 0x200D;
}

bool isSelector(char32_t c)
{
    return (c >= 0xFE00 && c <= 0xFE0F) || (c >= 0x180B && c <= 0x180D) || c == 0x180F
        || (c >= 0xE0100 && c <= 0xE01EF);
}

bool isJoinable(char32_t c)
{
    return c >= firstJoined && !isJoiner(c) && !isHidden(c) && !QChar::isSpace(c);
}

/// Whether the character has variants: symbols such as emoji, and letters such as ideographs.
bool hasVariants(char32_t c)
{
    return c >= 0xA9 && !isHidden(c) && !isSelector(c)
        && (QChar::isSymbol(c) || QChar::isPunct(c) || QChar::category(c) == QChar::Letter_Other);
}

/// Whether the character is unseen where it stands; `before` is 0 behind another one.
bool isUnseen(char32_t c, char32_t before, char32_t behind)
{
    if (c == U'\n' || c == U'\t')
        return false;
    if (c < firstOdd)
        return QChar::category(c) == QChar::Other_Control;
    if (isJoiner(c))
        return !isJoinable(before) || !isJoinable(behind) || isSelector(behind);
    if (isSelector(c))
        return !hasVariants(before) && behind != keycap;
    return isHidden(c);
}

/// The character there, 0 at the end; half a pair alone is a replacement character.
char32_t characterAt(const QString &text, qsizetype at)
{
    if (at >= text.size())
        return 0;
    const QChar first = text[at];
    if (!first.isSurrogate())
        return first.unicode();
    const bool isPair
        = first.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
    return isPair ? QChar::surrogateToUcs4(first, text[at + 1]) : replacement;
}

} // namespace

QString withoutHiddenMarks(const QString &text)
{
    QString given = text;
    given.replace(QLatin1String("\r\n"), QLatin1String("\n"));

    QString shown;
    shown.reserve(given.size());
    char32_t before = 0;
    for (qsizetype at = 0; at < given.size();) {
        const char32_t c = characterAt(given, at);
        at += QChar::requiresSurrogates(c) ? 2 : 1;
        const bool unseen = isUnseen(c, before, characterAt(given, at));
        shown += QChar::fromUcs4(unseen ? replacement : c);
        before = unseen ? 0 : c;
    }
    return shown;
}

QString lineWithoutHiddenMarks(const QString &text)
{
    QString line = text;
    line.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (QChar &c : line) {
        const char16_t code = c.unicode();
        const bool breaks
            = (code >= 0x0A && code <= 0x0D) || code == 0x85 || code == 0x2028 || code == 0x2029;
        if (breaks)
            c = u'⏎';
        else if (c == u'\t')
            c = u' ';
    }
    return withoutHiddenMarks(line);
}

} // namespace tirlo
