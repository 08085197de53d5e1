#include "Fuzz.h"
#include "core/Text.h"
#include "hooks/StepWording.h"

#include <QJsonDocument>
#include <QTextBoundaryFinder>

namespace tirlo {

namespace {

bool isOneLine(const QString &text)
{
    for (const QChar c : text) {
        if ((c >= u'\t' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029')
            return false;
    }
    return true;
}

int characters(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (finder.toNextBoundary() > 0) {
        // The finder itself stops within a pair at times.
        const qsizetype at = finder.position();
        if (at == text.size() || !text[at].isLowSurrogate() || !text[at - 1].isHighSurrogate())
            ++count;
    }
    return count;
}

void checkOneLine(const QString &text, int limit)
{
    const QString line = oneLine(text, limit);
    REQUIRE(isOneLine(line));
    const QString whole = oneLine(text, int(text.size()) + 1);
    if (line == whole) {
        // Text that fits stays as it is for good.
        REQUIRE(oneLine(line, limit) == line);
        return;
    }
    const QString kept = line.chopped(1);
    REQUIRE(line.endsWith(u'…') && whole.startsWith(kept) && kept.size() < whole.size());
    REQUIRE(characters(kept) <= limit);
    REQUIRE(kept.isEmpty() || !kept.back().isHighSurrogate()
            || !whole[kept.size()].isLowSurrogate());
}

} // namespace

/// A tool's name, a zero and its input: the input's JSON, or else the command itself.
void fuzz(const QByteArray &input)
{
    const qsizetype split = input.indexOf('\0');
    const QString tool = QString::fromUtf8(input.first(std::max(split, qsizetype(0))));
    const QByteArray rest = input.sliced(split + 1);
    const QString text = QString::fromUtf8(rest);
    QJsonObject members = QJsonDocument::fromJson(rest).object();
    if (members.isEmpty())
        members.insert("command", text);

    const QString step = frenchStep(tool, members);
    const bool hasCommand = members.value("command").isString();
    if (isOneLine(tool) && hasCommand && tool != QLatin1String("apply_patch"))
        REQUIRE(isOneLine(step));
    // Nothing else in the input says anything.
    QJsonObject more = members;
    more.insert("description", text);
    REQUIRE(frenchStep(tool, more) == step);

    const QString verb = bashVerb(text);
    REQUIRE((QStringList{"Lit", "Cherche", "Teste", "Exécute"}.contains(verb)));
    REQUIRE(bashVerb(u' ' + text) == verb);
    for (const int limit : {0, 1, 2, 60})
        checkOneLine(text, limit);
    const QString last = lastPathComponent(text);
    REQUIRE(text.contains(last) && (last == u'/' || !last.contains(u'/')));
    REQUIRE(lastPathComponent(last) == last);
}

} // namespace tirlo
