#include "ControlScene.h"

#include "ui/CardBackground.h"
#include "ui/PrimaryButton.h"
#include "ui/SecondaryButton.h"
#include "ui/StatusBadge.h"
#include "ui/Style.h"

#include <QVBoxLayout>

namespace tirlo {

namespace {

constexpr QSize cardSize{620, 98};

std::unique_ptr<QWidget> makeControls(std::optional<CardBackground::Wash> wash)
{
    auto card = std::make_unique<CardBackground>(wash);
    auto *pressed = new SecondaryButton(QStringLiteral("Pressed"), {}, {});
    pressed->setDown(true);
    auto *disabled = new PrimaryButton(QStringLiteral("Disabled"), {}, {});
    disabled->setEnabled(false);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Style::controlSpacing);
    buttons->addWidget(new SecondaryButton(QStringLiteral("Deny"), QStringLiteral("esc"), {}));
    buttons->addWidget(pressed);
    buttons->addWidget(disabled);
    buttons->addWidget(new PrimaryButton(QStringLiteral("Allow"), QStringLiteral("⏎"), {}));
    buttons->addSpacing(Style::controlSpacing);
    buttons->addWidget(new StatusBadge(QStringLiteral("Connected"), true));
    buttons->addWidget(new StatusBadge(QStringLiteral("No key"), false));
    buttons->addStretch();

    auto *column = new QVBoxLayout(card.get());
    column->addLayout(buttons);
    card->resize(cardSize);
    return card;
}

} // namespace

std::vector<ControlScene> controlScenes()
{
    using enum CardBackground::Wash;
    std::vector<ControlScene> scenes{
        {QStringLiteral("No wash"), [] { return makeControls(std::nullopt); }}};
    const std::pair<const char *, CardBackground::Wash> washes[]{
        {"Red", red},   {"Green", green},   {"Pink", pink}, {"Amber", amber},
        {"Cyan", cyan}, {"Indigo", indigo}, {"Soft", soft}};
    for (const auto &[caption, wash] : washes)
        scenes.push_back(
            {QString::fromLatin1(caption), [wash = wash] { return makeControls(wash); }});
    return scenes;
}

} // namespace tirlo
