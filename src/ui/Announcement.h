#pragma once

#include <QStringList>
#include <QWidget>

namespace tirlo {

/// Tells those who can't see it what a card has come with; nothing of it is drawn.
///
/// A screen reader speaks the words when the card comes into sight, and at once when a card in
/// sight gets other ones. The card is an alert of that name.
class Announcement final : public QWidget
{
    Q_OBJECT

public:
    explicit Announcement(QWidget *card);

    /// Tells the sentences, up to a length that anyone listens to; line breaks count as blanks.
    void tell(const QStringList &sentences);
};

} // namespace tirlo
