#include "SettingsControls.h"

#include "ui/Style.h"

#include <QLabel>
#include <QPushButton>

namespace tirlo {

QLabel *SettingsControls::caption(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont font = label->font();
    font.setPixelSize(int(Style::captionSize));
    label->setFont(font);
    return label;
}

QPushButton *SettingsControls::button(const QString &title, const QString &section)
{
    // A single ampersand would make a shortcut of the letter behind it.
    auto *button = new QPushButton(QString(title).replace(u'&', QStringLiteral("&&")));
    button->setAutoDefault(true);
    button->setAccessibleName(title);
    button->setAccessibleDescription(section);
    return button;
}

} // namespace tirlo
