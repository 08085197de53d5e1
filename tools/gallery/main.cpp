#include "ControlScene.h"
#include "Scene.h"
#include "Sheet.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "island/IslandConst.h"
#include "mascot/SoundEngine.h"
#include "support/FakeScreens.h"
#include "support/ManualFrameDriver.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"
#include "ui/motion/FrameClock.h"
#include "views/IslandRootView.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QTextStream>

using namespace tirlo;

namespace {

/// Paints the real views as the store of the scene has them.
QImage photograph(const Scene &scene, double devicePixelRatio)
{
    ManualQueue queue;
    ManualFrameDriver driver(queue);
    FrameClock frames(queue, driver);
    const FakeScreens screens;
    MemoryStore settings;
    AppState state(settings, queue);
    Notifications notifications;
    SilentSoundEngine sounds;
    const IslandActions actions{[](const QString &) {}};

    scene.arrange(state);
    IslandRootView root({state, notifications, sounds, queue, frames, screens, actions});
    root.setAttribute(Qt::WA_TranslucentBackground);
    root.resize(IslandConst::panelWidth, IslandConst::panelHeight);
    root.show();
    // All motion has come to rest, and the mascot has its mood.
    queue.advance(1);
    QCoreApplication::processEvents();

    QImage tile = blankTile(devicePixelRatio);
    QPainter painter(&tile);
    root.render(&painter, {}, {}, QWidget::DrawChildren);
    return tile;
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
        tiles.push_back({scene.caption, photograph(scene, devicePixelRatio)});
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
        isComplete &= writeSheet(QStringLiteral("controls"), controlTiles(ratio), ratio, folder);
    }
    return isComplete ? 0 : 1;
}
