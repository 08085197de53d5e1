#include "Text.h"

#include <QTextBoundaryFinder>

namespace tirlo {

namespace {

constexpr int codeUnitsPerCharacter = 64;

bool isWithinPair(const QString &text, qsizetype at)
{
    return at > 0 && at < text.size() && text[at - 1].isHighSurrogate()
        && text[at].isLowSurrogate();
}

/// Where the first `count` characters of the text end, in code units.
qsizetype endOfCharacters(const QString &text, int count)
{
    if (text.size() <= count)
        return text.size();
    const QString head = text.left(qsizetype(count + 1) * codeUnitsPerCharacter);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, head);
    for (int i = 0; i < count; ++i) {
        // Beside letters of some scripts, Khmer say, the finder stops within an emoji's two units.
        do {
            if (finder.toNextBoundary() < 0)
                return isWithinPair(text, head.size()) ? head.size() + 1 : head.size();
        } while (isWithinPair(text, finder.position()));
    }
    return finder.position();
}

} // namespace

QString firstCharacters(const QString &text, int count)
{
    return text.left(endOfCharacters(text, count));
}

bool hasMoreCharacters(const QString &text, int count)
{
    return endOfCharacters(text, count) < text.size();
}

QString lastPathComponent(const QString &path)
{
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    if (end == 1)
        return path.left(1);
    const qsizetype slash = path.lastIndexOf(u'/', end - 1);
    return path.mid(slash + 1, end - slash - 1);
}

} // namespace tirlo
