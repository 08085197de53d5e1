#pragma once

#include <QImage>
#include <QTimer>

namespace tirlo {

/// Paints an island's worth of antialiased shapes 60 times a second on the main thread.
class RepaintLoad
{
public:
    RepaintLoad();

private:
    void paint();

    QImage m_canvas;
    QTimer m_frames;
    int m_frame = 0;
};

} // namespace tirlo
