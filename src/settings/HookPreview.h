#pragma once

#include <QWidget>

class QLabel;

namespace tirlo {

class HookInstaller;
class MarkedLines;

/// The change to an agent's settings file, for review: what the file would hold, and two buttons.
class HookPreview final : public QWidget
{
    Q_OBJECT

public:
    explicit HookPreview(QWidget *parent = nullptr);

    /// Shows the new text of the installer's file, compared with the file as it stands.
    void showChange(const HookInstaller &installer, const QString &text);

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
