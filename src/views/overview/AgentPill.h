#pragma once

#include "core/model/AgentTask.h"
#include "ui/motion/Animated.h"
#include "ui/motion/FrameClock.h"
#include "views/ViewContext.h"

#include <QAbstractButton>
#include <QPixmap>

#include <optional>

namespace tirlo {

class MiniBotCanvasView;

/// One task that is not in focus, as a capsule with its name; a click asks for the focus.
///
/// Under the pointer it grows and lights up in the task's colour.
class AgentPill final : public QAbstractButton
{
    Q_OBJECT

public:
    static constexpr int capsuleHeight = 28;

    explicit AgentPill(const ViewContext &context, QWidget *parent = nullptr);

    /// The pill's geometry for a capsule there: badge, shadow and growth need room around it.
    [[nodiscard]] static QRect frameAround(const QRect &capsule);

    void setTask(const AgentTask &task);
    [[nodiscard]] const AgentTask &task() const { return m_task; }

    /// How much of the pill is there: opacity 0 to 1, and a scale about its middle.
    void setPresence(double opacity, double scale);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;

    [[nodiscard]] bool hitButton(const QPoint &position) const override;

private:
    /// All that the picture of the pill depends on beside its size.
    struct Look
    {
        QString color;
        QString name;
        std::optional<PillBadge> badge;
        double scale = 1;
        double hover = 0;
        bool hasFocusRing = false;

        bool operator==(const Look &) const = default;
    };

    void makeBot();
    void placeBot();
    void followHover();
    void showHover(double time);
    void dressBot();
    void paintPicture(QImage &picture) const;
    void drawCapsule(QPainter &painter, const QColor &taskColor) const;
    void drawName(QPainter &painter, const QColor &taskColor) const;
    [[nodiscard]] QRectF capsule() const;
    [[nodiscard]] double scale() const;

    ViewContext m_context;
    AgentTask m_task;
    MiniBotCanvasView *m_bot = nullptr;
    QString m_name;
    double m_opacity = 1;
    double m_presenceScale = 1;
    bool m_isHovered = false;
    /// From 0, at rest, to 1, under the pointer; as of the last frame.
    double m_hover = 0;
    Animated<double> m_hoverMotion;
    /// The pill without its mascot, in the look it was drawn in; null while it is not on show.
    QPixmap m_picture;
    Look m_look;
    FrameClock::Subscription m_frames;
};

} // namespace tirlo
