#include "ProgramIcon.h"

#include "Color.h"
#include "Icon.h"
#include "Style.h"

#include <QIcon>
#include <QIconEngine>
#include <QPainter>

#include <algorithm>

namespace tirlo::ProgramIcon {

namespace {

const QString themeName = QStringLiteral("tirlo-symbolic");
constexpr QLatin1String barPicture("MenuBarIcon");
constexpr double edgeOpacity = 0.5;
/// The edge's width as a share of the picture's side.
constexpr double edgeShare = 0.04;
/// Sizes that bars and window managers ask for, in pixels.
constexpr int barSides[]{16, 22, 24, 32, 48, 64};
constexpr int windowSides[]{16, 24, 32, 48, 64, 128, 256};

QPixmap drawnOnBar(int side, bool isDark)
{
    const QColor fill = isDark ? Style::primaryText : Style::card;
    const QColor edge = isDark ? Style::card : Style::primaryText;
    const int width = std::max(1, int(side * edgeShare));
    const int inner = side - 2 * width;
    const QPixmap shape = Icon::picture(barPicture, inner, edge);

    QPixmap drawn(side, side);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    for (const int x : {0, width, 2 * width}) {
        for (const int y : {0, width, 2 * width})
            painter.drawPixmap(x, y, shape);
    }
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(drawn.rect(), withOpacity(Style::white, edgeOpacity));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawPixmap(width, width, Icon::picture(barPicture, inner, fill));
    return drawn;
}

/// Draws the template in whatever size is asked for, and gives it its name in the theme.
class BarEngine final : public QIconEngine
{
public:
    explicit BarEngine(bool isDark)
        : m_isDark(isDark)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State) override
    {
        const int side = std::min(rect.width(), rect.height());
        const QPoint corner((rect.width() - side) / 2, (rect.height() - side) / 2);
        painter->drawPixmap(rect.topLeft() + corner, drawnOnBar(side, m_isDark));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode, QIcon::State) override
    {
        return drawnOnBar(std::min(size.width(), size.height()), m_isDark);
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        QList<QSize> sizes;
        for (const int side : barSides)
            sizes.append({side, side});
        return sizes;
    }

    QString iconName() override { return QIcon::hasThemeIcon(themeName) ? themeName : QString(); }

    bool isNull() override { return false; }
    [[nodiscard]] QIconEngine *clone() const override { return new BarEngine(m_isDark); }

private:
    bool m_isDark;
};

} // namespace

QIcon onBar(bool isDark)
{
    return QIcon(new BarEngine(isDark));
}

QIcon ofWindow()
{
    QIcon icon;
    for (const int side : windowSides) {
        QPixmap drawn(side, side);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Style::card);
        painter.drawRoundedRect(drawn.rect(), side * 0.22, side * 0.22);
        const int inner = side * 3 / 4;
        const int margin = (side - inner) / 2;
        painter.drawPixmap(margin, margin, Icon::picture(barPicture, inner, Style::primaryText));
        icon.addPixmap(drawn);
    }
    return icon;
}

} // namespace tirlo::ProgramIcon
