#include "ControlScene.h"
#include "Scene.h"
#include "Sheet.h"

#include "core/AppState.h"
#include "core/IslandConst.h"
#include "core/KeychainStore.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"
#include "island/IslandWriter.h"
#include "support/FakeApplications.h"
#include "support/FakeScreens.h"
#include "support/ManualFrameDriver.h"
#include "support/ManualQueue.h"
#include "support/MemorySecretStore.h"
#include "support/MemoryStore.h"
#include "support/StandInIsland.h"
#include "ui/motion/FrameClock.h"
#include "views/CardSight.h"
#include "views/frame/IslandRootView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QTextStream>

#include <memory>

using namespace tirlo;

namespace {

/// The real views over a store of their own, in time that stands still between pictures.
class Stage
{
public:
    explicit Stage(const Scene &scene)
    {
        scene.arrange(state);
        m_root = std::make_unique<IslandRootView>(
            ViewContext{state, m_notifications, m_island, m_sounds, m_queue, m_frames, m_screens,
                        m_applications, m_keychain, m_actions, m_sight});
        m_root->setAttribute(Qt::WA_TranslucentBackground);
        if (scene.wash)
            for (auto *card : m_root->findChildren<CardBackground *>())
                card->setWash(scene.wash);
        m_root->resize(IslandConst::panelWidth, IslandConst::panelHeight);
        m_root->show();
        press(scene.pressed);
    }

    QImage photographAfter(double seconds, double devicePixelRatio, const QSize &size = tileSize)
    {
        m_queue.advance(seconds);
        QCoreApplication::processEvents();
        QImage tile = blankTile(devicePixelRatio, size);
        QPainter painter(&tile);
        m_root->render(&painter, {}, {}, QWidget::DrawChildren);
        return tile;
    }

private:
    void press(const QString &name)
    {
        for (auto *button : m_root->findChildren<QAbstractButton *>()) {
            if (!name.isEmpty() && button->accessibleName() == name)
                button->click();
        }
    }

    ManualQueue m_queue;
    ManualFrameDriver m_driver{m_queue};
    FrameClock m_frames{m_queue, m_driver};
    const FakeScreens m_screens;
    FakeApplications m_applications;
    MemorySecretStore m_secrets;
    KeychainStore m_keychain{m_secrets};
    MemoryStore m_settings;
    Notifications m_notifications;
    SilentSoundEngine m_sounds;
    const IslandActions m_actions{.sendApprovalDecision = [](const ApprovalAnswer &) {},
                                  .switchChatProvider = [](ChatProvider) {}};

    CardSight m_sight{m_queue};

public:
    AppState state{m_settings, m_queue};

private:
    StandInIsland m_island{state};
    std::unique_ptr<IslandRootView> m_root;
};

/// The scene once all motion has come to rest and the mascot has its mood.
QImage photograph(const Scene &scene, double devicePixelRatio, const QSize &size)
{
    return Stage(scene).photographAfter(1, devicePixelRatio, size);
}

/// A film strip of the island opening on its spring and closing on its curve.
std::vector<Tile> motionTiles(double devicePixelRatio)
{
    constexpr double step = 0.06;
    constexpr int picturesEach = 8;
    Stage stage({{}, [](AppState &state) {
                     state.mousePosition = {700, 120};
                     IslandWriter(state).setMode(IslandMode::compact);
                 }});
    stage.photographAfter(1, devicePixelRatio);

    std::vector<Tile> tiles;
    for (const IslandMode mode : {IslandMode::expanded, IslandMode::compact}) {
        IslandWriter(stage.state).setMode(mode);
        for (int i = 0; i < picturesEach; ++i) {
            const QString caption = QStringLiteral("%1, %2 s").arg(rawText(mode)).arg(i * step);
            tiles.push_back({caption, stage.photographAfter(i ? step : 0, devicePixelRatio)});
        }
        stage.photographAfter(2, devicePixelRatio);
    }
    return tiles;
}

/// A film strip of one card that goes and another that comes, the island growing between them.
std::vector<Tile> swapTiles(double devicePixelRatio)
{
    constexpr double step = 0.05;
    constexpr int picturesEach = 8;
    constexpr QSize higherTile{720, 300};
    Stage stage({{}, [](AppState &state) {
                     state.mousePosition = {700, 120};
                     IslandWriter(state).setView(IslandView::question);
                     IslandWriter(state).setMode(IslandMode::expanded);
                 }});
    stage.photographAfter(2, devicePixelRatio);

    std::vector<Tile> tiles;
    for (const IslandView view : {IslandView::prompt, IslandView::finished}) {
        IslandWriter(stage.state).setView(view);
        for (int i = 0; i < picturesEach; ++i) {
            const QString caption = QStringLiteral("to %1, %2 s").arg(rawText(view)).arg(i * step);
            tiles.push_back(
                {caption, stage.photographAfter(i ? step : 0, devicePixelRatio, higherTile)});
        }
        stage.photographAfter(2, devicePixelRatio);
    }
    return tiles;
}

/// A film strip of the mascot that comes and goes: over the greeting's when a request cuts that
/// short, and with the island of a screen whose notch hides it.
std::vector<Tile> mascotTiles(double devicePixelRatio)
{
    constexpr double step = 0.06;
    Stage stage({{}, [](AppState &state) {
                     state.mousePosition = {700, 120};
                     state.notchWidth = 184;
                     state.notchHeight = 32;
                     state.hasNotch = true;
                     IslandWriter(state).setMode(IslandMode::hidden);
                 }});
    stage.photographAfter(1, devicePixelRatio);
    IslandWriter(stage.state).setView(IslandView::greeting);
    IslandWriter(stage.state).setMode(IslandMode::expanded);
    stage.photographAfter(1.8, devicePixelRatio);

    std::vector<Tile> tiles;
    const auto film = [&](const char *caption, int pictures) {
        for (int i = 0; i < pictures; ++i)
            tiles.push_back({QStringLiteral("%1, %2 s").arg(QLatin1String(caption)).arg(i * step),
                             stage.photographAfter(i ? step : 0, devicePixelRatio)});
        stage.photographAfter(2, devicePixelRatio);
    };
    IslandWriter(stage.state).setView(IslandView::question);
    film("greeting to question", 8);
    IslandWriter(stage.state).setMode(IslandMode::hidden);
    film("to hidden", 6);
    IslandWriter(stage.state).setMode(IslandMode::compact);
    film("to compact", 6);
    return tiles;
}

/// Paints a widget of its own in the middle of a tile.
QImage photograph(QWidget &widget, double devicePixelRatio)
{
    widget.setAttribute(Qt::WA_TranslucentBackground);
    widget.show();
    QCoreApplication::processEvents();

    QImage tile = blankTile(devicePixelRatio);
    QPainter painter(&tile);
    const QSize room = tileSize - widget.size();
    widget.render(&painter, {room.width() / 2, room.height() / 2}, {}, QWidget::DrawChildren);
    return tile;
}

std::vector<Tile> tilesOf(const SceneGroup &group, double devicePixelRatio)
{
    std::vector<Tile> tiles;
    for (const Scene &scene : group.scenes)
        tiles.push_back({scene.caption, photograph(scene, devicePixelRatio, group.size)});
    return tiles;
}

std::vector<Tile> controlTiles(double devicePixelRatio)
{
    std::vector<Tile> tiles;
    for (const ControlScene &scene : controlScenes()) {
        const std::unique_ptr<QWidget> widget = scene.make();
        tiles.push_back({scene.caption, photograph(*widget, devicePixelRatio)});
    }
    return tiles;
}

bool writeSheet(const QString &name, const std::vector<Tile> &tiles, double devicePixelRatio,
                const QDir &folder)
{
    const QString path
        = folder.filePath(QStringLiteral("%1@%2x.png").arg(name).arg(devicePixelRatio));
    const bool isWritten = sheet(tiles, devicePixelRatio).save(path);
    QTextStream(isWritten ? stdout : stderr)
        << (isWritten ? QString() : QStringLiteral("Can't write ")) << path << Qt::endl;
    return isWritten;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (argc != 2) {
        QTextStream(stderr) << "usage: tirlo-gallery OUTDIR" << Qt::endl;
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(QStringLiteral("."))) {
        QTextStream(stderr) << "Can't make the folder " << folder.path() << Qt::endl;
        return 1;
    }

    bool isComplete = true;
    for (const double ratio : {1.0, 2.0}) {
        for (const SceneGroup &group : allScenes())
            isComplete &= writeSheet(group.name, tilesOf(group, ratio), ratio, folder);
        isComplete &= writeSheet(QStringLiteral("motion"), motionTiles(ratio), ratio, folder);
        isComplete &= writeSheet(QStringLiteral("mascot"), mascotTiles(ratio), ratio, folder);
        isComplete &= writeSheet(QStringLiteral("swap"), swapTiles(ratio), ratio, folder);
        isComplete &= writeSheet(QStringLiteral("controls"), controlTiles(ratio), ratio, folder);
    }
    return isComplete ? 0 : 1;
}
