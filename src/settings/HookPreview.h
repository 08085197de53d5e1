#pragma once

#include <QWidget>

class QLabel;

namespace tirlo {

class MarkedLines;
struct HookChange;

/// The change to an agent's settings file, for review: what the file would hold, and two buttons.
class HookPreview final : public QWidget
{
    Q_OBJECT

public:
    /// `section` tells a screen reader whose change it is.
    explicit HookPreview(const QString &section, QWidget *parent = nullptr);

    /// Shows the change of the file with that label.
    void showChange(const QString &label, const HookChange &change);

    /// Empties the box.
    void clear();

Q_SIGNALS:
    void confirmed();
    void cancelled();

private:
    MarkedLines *const m_box;
    QLabel *const m_summary;
    MarkedLines *const m_removed;
};

} // namespace tirlo
