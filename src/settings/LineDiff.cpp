#include "LineDiff.h"

#include <algorithm>
#include <numeric>
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

LineDiff compareLines(const QString &before, const QString &after)
{
    QStringList old = linesOf(before);
    QStringList fresh = linesOf(after);

    // Most of a file is the same at both ends.
    const qsizetype shorter = std::min(old.size(), fresh.size());
    qsizetype head = 0;
    while (head < shorter && old[head] == fresh[head])
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head && old[old.size() - 1 - tail] == fresh[fresh.size() - 1 - tail])
        ++tail;
    old = old.sliced(head, old.size() - head - tail);
    fresh = fresh.sliced(head, fresh.size() - head - tail);

    LineDiff diff;
    if (old.size() > mostPairs / (fresh.size() + 1)) {
        diff.removed = old;
        diff.changed.resize(fresh.size());
        std::iota(diff.changed.begin(), diff.changed.end(), int(head));
        return diff;
    }

    CommonLines common(old, fresh);
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < old.size() || j < fresh.size()) {
        const bool oldLeft = i < old.size();
        const bool freshLeft = j < fresh.size();
        if (oldLeft && freshLeft && old[i] == fresh[j]) {
            ++i;
            ++j;
        } else if (oldLeft && (!freshLeft || common.count(i + 1, j) >= common.count(i, j + 1))) {
            diff.removed.append(old[i++]);
        } else {
            diff.changed.append(int(head + j++));
        }
    }
    return diff;
}

} // namespace tirlo
