#include "ControlScene.h"
#include "Scene.h"
#include "Sheet.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "island/IslandConst.h"
#include "mascot/SoundEngine.h"
#include "platform/linux/FileKeyValueStore.h"
#include "platform/linux/QtMainQueue.h"
#include "views/IslandRootView.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QTemporaryDir>
#include <QTextStream>

using namespace tirlo;

namespace {

/// Paints the real views as the store of the scene has them.
QImage photograph(const Scene &scene, double devicePixelRatio)
{
    const QTemporaryDir home;
    QtMainQueue queue;
    FileKeyValueStore settings(home.filePath(QStringLiteral("settings.json")), queue);
    AppState state(settings, queue);
    Notifications notifications;
    SilentSoundEngine sounds;
    const IslandActions actions{[](const QString &) {}};

    scene.arrange(state);
    IslandRootView root({state, notifications, sounds, queue, actions});
    root.setAttribute(Qt::WA_TranslucentBackground);
    root.resize(IslandConst::panelWidth, IslandConst::panelHeight);
    root.show();
    QCoreApplication::processEvents();

    QImage tile = blankTile(devicePixelRatio);
    QPainter painter(&tile);
    root.render(&painter, {}, {}, QWidget::DrawChildren);
    return tile;
}

bool writeSheet(const SceneGroup &group, double devicePixelRatio, const QDir &folder)
{
    std::vector<Tile> tiles;
    for (const Scene &scene : group.scenes)
        tiles.push_back({scene.caption, photograph(scene, devicePixelRatio)});

    const QString path
        = folder.filePath(QStringLiteral("%1@%2x.png").arg(group.name).arg(devicePixelRatio));
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
