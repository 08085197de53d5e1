#include "LineDiff.h"

#include <algorithm>
#include <vector>

namespace tirlo {

namespace {

/// Pairs of lines beyond which a comparison would be felt.
constexpr qsizetype mostPairs = 4'000'000;

QStringList linesOf(const QString &text)
{
    return text.isEmpty() ? QStringList() : text.split(u'\n');
}

/// For every pair of lines, how many lines the two texts have in common from there on.
class CommonLines
{
public:
    CommonLines(const QStringList &before, const QStringList &after)
        : m_width(after.size() + 1)
        , m_counts(std::size_t((before.size() + 1) * m_width))
    {
        for (qsizetype i = before.size() - 1; i >= 0; --i) {
            for (qsizetype j = after.size() - 1; j >= 0; --j) {
                count(i, j) = before[i] == after[j] ? count(i + 1, j + 1) + 1
                                                    : std::max(count(i + 1, j), count(i, j + 1));
            }
        }
    }

    int &count(qsizetype i, qsizetype j) { return m_counts[std::size_t(i * m_width + j)]; }

private:
    const qsizetype m_width;
    std::vector<int> m_counts;
};

} // namespace

QList<DiffLine> diffLines(const QString &before, const QString &after)
{
    using Kind = DiffLine::Kind;
    QStringList old = linesOf(before);
    QStringList fresh = linesOf(after);
    QList<DiffLine> lines;
    const auto append = [&lines](Kind kind, const QStringList &texts) {
        for (const QString &text : texts)
            lines.append({kind, text});
    };

    // Most of a file is the same at both ends.
    const qsizetype shorter = std::min(old.size(), fresh.size());
    qsizetype head = 0;
    while (head < shorter && old[head] == fresh[head])
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head && old[old.size() - 1 - tail] == fresh[fresh.size() - 1 - tail])
        ++tail;
    append(Kind::kept, old.first(head));
    const QStringList end = old.last(tail);
    old = old.sliced(head, old.size() - head - tail);
    fresh = fresh.sliced(head, fresh.size() - head - tail);

    if (old.size() > mostPairs / (fresh.size() + 1)) {
        append(Kind::removed, old);
        append(Kind::added, fresh);
        append(Kind::kept, end);
        return lines;
    }

    CommonLines common(old, fresh);
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < old.size() || j < fresh.size()) {
        const bool oldLeft = i < old.size();
        const bool freshLeft = j < fresh.size();
        if (oldLeft && freshLeft && old[i] == fresh[j]) {
            lines.append({Kind::kept, old[i++]});
            ++j;
        } else if (oldLeft && (!freshLeft || common.count(i + 1, j) >= common.count(i, j + 1))) {
            lines.append({Kind::removed, old[i++]});
        } else {
            lines.append({Kind::added, fresh[j++]});
        }
    }
    append(Kind::kept, end);
    return lines;
}

LineDiff compareLines(const QString &before, const QString &after)
{
    LineDiff diff;
    int number = 0;
    for (const DiffLine &line : diffLines(before, after)) {
        if (line.kind == DiffLine::Kind::removed) {
            diff.removed.append(line.text);
            continue;
        }
        if (line.kind == DiffLine::Kind::added)
            diff.changed.append(number);
        ++number;
    }
    return diff;
}

} // namespace tirlo
