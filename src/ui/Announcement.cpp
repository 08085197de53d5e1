#include "Announcement.h"

#include "AccessibleRole.h"
#include "core/HiddenMarks.h"
#include "core/Text.h"

namespace tirlo {

namespace {

/// In characters; more than that nobody waits for, and the card has it all to be read.
constexpr int longest = 300;

/// One line, with a full stop where a sentence has no end of its own.
QString spoken(const QStringList &sentences)
{
    QString line;
    for (const QString &sentence : sentences) {
        const QString words = withoutHiddenMarks(sentence).simplified();
        if (!line.isEmpty() && !words.isEmpty())
            line += line.back().isPunct() ? QStringLiteral(" ") : QStringLiteral(". ");
        line += words;
    }
    return line;
}

} // namespace

Announcement::Announcement(QWidget *card)
    : QWidget(card)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(0, 0, 1, 1);
    AccessibleRole::set(*this, QAccessible::Notification);
    AccessibleRole::set(*card, QAccessible::AlertMessage);
}

void Announcement::tell(const QStringList &sentences)
{
    const QString words = spoken(sentences);
    const QString told = hasMoreCharacters(words, longest)
        ? firstCharacters(words, longest) + QStringLiteral("…")
        : words;
    // Words are spoken when what bears them comes into sight.
    hide();
    setAccessibleName(told);
    parentWidget()->setAccessibleName(told);
    show();
    QAccessibleEvent alert(parentWidget(), QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace tirlo
