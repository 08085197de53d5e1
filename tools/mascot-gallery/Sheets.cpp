#include "Sheets.h"

#include "Actor.h"
#include "GreetingSheets.h"
#include "core/PillCatalog.h"

#include <memory>
#include <numbers>

namespace tirlo {

namespace {

/// Sides of the canvases in points: a card's mascot, a pill's mini and a mini of the small grid.
constexpr double cardSide = 58 / 0.6;
constexpr double pillSide = 22 / 0.6;
constexpr double gridSide = 20;
/// Height above the body that the island's canvas keeps for particles.
constexpr double overhang = 40;

constexpr QSize bigCell(110, 140);

/// Adds the present moment of a big mascot.
void addBig(Sheet &sheet, const QString &caption, std::shared_ptr<Actor> actor,
            double side = cardSide)
{
    actor->engine().particleOverhang = overhang;
    sheet.add(caption, [actor = std::move(actor), side](QPainter &painter) {
        painter.translate((bigCell.width() - side) / 2, 0);
        actor->paint(painter, {side, side + overhang});
    });
}

std::shared_ptr<Actor> actorIn(BotState state, double seconds)
{
    auto actor = std::make_shared<Actor>();
    actor->engine().particleOverhang = overhang;
    actor->engine().setState(state, true);
    actor->play(seconds);
    return actor;
}

std::shared_ptr<Actor> actorWithEye(EyeShape eye, Actor::Kind kind = Actor::Kind::big)
{
    auto actor = std::make_shared<Actor>(kind);
    actor->engine().eyeOverride = eye;
    actor->engine().eyeOverrideUntil = BotEngine::forever;
    actor->play(0.4);
    return actor;
}

std::shared_ptr<Actor> turnedActor(double yaw, double pitch)
{
    auto actor = std::make_shared<Actor>();
    actor->engine().yaw = yaw;
    actor->engine().pitch = pitch;
    return actor;
}

/// One row of a film sheet: a beginning, and what the canvas does after each frame.
struct Film
{
    QString name;
    double seconds;
    std::function<void(BotEngine &)> begin;
    std::function<void(BotEngine &)> afterFrame = {};
    BotState state = BotState::idle;
};

constexpr int momentsPerFilm = 12;

void addFilm(Sheet &sheet, const Film &film)
{
    for (int i = 0; i < momentsPerFilm; ++i) {
        // A picture can't be rewound, so each moment is played from the start.
        auto actor = actorIn(film.state, 1.2);
        film.begin(actor->engine());
        const double moment = film.seconds * i / (momentsPerFilm - 1);
        actor->play(moment, film.afterFrame);
        const QString time = QString::number(moment, 'f', 2);
        addBig(sheet, i == 0 ? film.name : time, actor);
    }
}

Film emoteFilm(BotEmote emote)
{
    return {rawText(emote), 2.1, [emote](BotEngine &bot) { bot.triggerEmote(emote, 1.8); }};
}

Film entranceFilm(BotState state, double seconds)
{
    return {rawText(state), seconds, [state](BotEngine &bot) { bot.setState(state, false); }};
}

/// A file is over the box: its slot opens.
void holdFile(BotEngine &bot)
{
    bot.slotHTarget = bot.morph > 0.3 ? 0.2 : 0;
}

void unfoldBox(BotEngine &bot)
{
    bot.startTween(BotProperty::morph, {{1, 550, easeInOutCubic}});
}

} // namespace

Sheet stateSheet()
{
    Sheet sheet(QStringLiteral("states"), bigCell, 6);
    for (const BotState state : allCases<BotState>())
        addBig(sheet, rawText(state), actorIn(state, 2.4));
    return sheet;
}

Sheet eyeSheet()
{
    Sheet sheet(QStringLiteral("eyes"), bigCell, 13);
    for (const EyeShape eye : allCases<EyeShape>())
        addBig(sheet, rawText(eye), actorWithEye(eye));
    for (const EyeShape eye : allCases<EyeShape>()) {
        auto actor = actorWithEye(eye, Actor::Kind::mini);
        actor->engine().bodyColor = BotColor{0.545, 0.706, 0.973};
        actor->engine().yaw = 0;
        actor->engine().pitch = 0;
        addBig(sheet, QStringLiteral("mini ") + rawText(eye), actor);
    }
    for (const QPointF look : {QPointF(-1.3, 0), QPointF(-0.62, 0), QPointF(-0.62, 0.5),
                               QPointF(0, 0.5), QPointF(0.62, 0.5), QPointF(0.62, -0.5),
                               QPointF(0, -0.5), QPointF(1.3, 0), QPointF(0, 1.2)}) {
        addBig(sheet, QStringLiteral("look %1 %2").arg(look.x()).arg(look.y()),
               turnedActor(look.x(), look.y()));
    }
    return sheet;
}

Sheet badgeSheet()
{
    Sheet sheet(QStringLiteral("badges"), bigCell, 6);
    for (const BotState state :
         {BotState::working, BotState::approval, BotState::question, BotState::error}) {
        for (const double moment : {0.15, 0.2, 0.25, 0.7, 0.8, 0.9})
            addBig(sheet, QStringLiteral("%1 %2").arg(rawText(state)).arg(moment),
                   actorIn(state, moment));
    }
    return sheet;
}

Sheet particleSheet()
{
    using Type = Particle::ParticleType;
    Sheet sheet(QStringLiteral("particles"), bigCell, 8);
    for (const Type type : {Type::heart, Type::star, Type::spark, Type::sweat, Type::z}) {
        for (int i = 0; i < 8; ++i) {
            auto actor = std::make_shared<Actor>();
            actor->engine().particleOverhang = overhang;
            actor->engine().emitParticles(type, 4);
            const double moment = 0.1 * (i + 1);
            actor->play(moment);
            addBig(sheet, QString::number(moment, 'f', 2), actor);
        }
    }
    return sheet;
}

Sheet morphSheet()
{
    Sheet sheet(QStringLiteral("morph"), bigCell, 6);
    for (int i = 0; i <= 10; ++i) {
        auto actor = std::make_shared<Actor>();
        actor->engine().morph = i / 10.0;
        addBig(sheet, QString::number(i / 10.0), actor);
    }
    for (const double opening : {0.03, 0.1, 0.2, 0.3, 0.42}) {
        auto actor = std::make_shared<Actor>();
        actor->engine().morph = 1;
        actor->engine().slotH = opening;
        addBig(sheet, QStringLiteral("slot %1").arg(opening), actor);
    }
    auto chewing = std::make_shared<Actor>();
    chewing->engine().morph = 1;
    chewing->engine().isChewing = true;
    addBig(sheet, QStringLiteral("chewing"), chewing);
    auto blue = std::make_shared<Actor>();
    blue->engine().morph = 1;
    blue->engine().slotH = 0.2;
    blue->engine().bodyColor = BotColor{0.26, 0.52, 0.96};
    addBig(sheet, QStringLiteral("blue"), blue);
    return sheet;
}

Sheet filmSheet()
{
    Sheet sheet(QStringLiteral("films"), bigCell, momentsPerFilm);
    addFilm(sheet, {QStringLiteral("blink"), 0.24, [](BotEngine &bot) { bot.blink(); }});
    for (const BotEmote emote : allCases<BotEmote>())
        addFilm(sheet, emoteFilm(emote));
    addFilm(sheet, {QStringLiteral("slap"), 0.5, [](BotEngine &bot) { bot.slap(); }});
    addFilm(sheet, {QStringLiteral("greet"), 2.2, [](BotEngine &bot) { bot.greet(); }});
    addFilm(sheet, {QStringLiteral("upload"), 1, unfoldBox, holdFile});
    addFilm(sheet,
            {QStringLiteral("gulp"), 0.37,
             [](BotEngine &bot) {
                 bot.morph = 1;
                 bot.gulp();
             },
             [](BotEngine &bot) { bot.slotHTarget = 0; }});
    addFilm(sheet, entranceFilm(BotState::approval, 1));
    addFilm(sheet, entranceFilm(BotState::question, 1));
    addFilm(sheet, entranceFilm(BotState::error, 0.4));
    addFilm(sheet, entranceFilm(BotState::finished, 1.8));
    addFilm(sheet, entranceFilm(BotState::dizzy, 1.4));
    addFilm(sheet, entranceFilm(BotState::sleeping, 3));
    return sheet;
}

Sheet miniSheet()
{
    constexpr QSize cell(84, 44);
    Sheet sheet(QStringLiteral("minis"), cell, 11);
    unsigned seed = 0;
    for (const PillDefinition &pill : PillCatalog::all()) {
        for (const BotState state : allCases<BotState>()) {
            auto actor = std::make_shared<Actor>(Actor::Kind::mini, ++seed);
            actor->engine().bodyColor = cgColorFromHex(QString(pill.color));
            actor->engine().setState(state, true);
            actor->play(1.6);
            const QString caption = state == BotState::idle ? pill.name : rawText(state);
            sheet.add(caption, [actor](QPainter &painter) {
                painter.translate(4, 4);
                actor->paint(painter, {pillSide, pillSide});
                painter.translate(48, 8);
                actor->paint(painter, {gridSide, gridSide});
            });
        }
    }
    return sheet;
}

Sheet sizeSheet()
{
    Sheet sheet(QStringLiteral("sizes"), QSize(160, 180), 5);
    for (const double diameter : {20.0, 26.0, 44.0, 58.0, 66.0}) {
        for (const BotState state : {BotState::idle, BotState::working, BotState::approval}) {
            auto actor = actorIn(state, 2.4);
            const double side = diameter / 0.6;
            sheet.add(QStringLiteral("%1 %2").arg(rawText(state)).arg(diameter),
                      [actor, side](QPainter &painter) {
                          painter.translate((160 - side) / 2, (140 - side) / 2);
                          actor->paint(painter, {side, side + overhang});
                      });
        }
    }
    return sheet;
}

std::vector<Sheet> allSheets()
{
    std::vector<Sheet> sheets;
    for (const auto make : {stateSheet, eyeSheet, badgeSheet, particleSheet, morphSheet, filmSheet,
                            miniSheet, sizeSheet, greetingSheet, foldedGreetingSheet})
        sheets.push_back(make());
    return sheets;
}

} // namespace tirlo
