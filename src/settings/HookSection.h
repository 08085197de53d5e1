#pragma once

#include <QGroupBox>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace tirlo {

class HookInstaller;
class HookPreview;

/// What the sections of all agents share: a line, two buttons, and the preview below them.
class HookSection : public QGroupBox
{
    Q_OBJECT

public:
    /// Looks at the agent's settings file again.
    virtual void refresh() = 0;

Q_SIGNALS:
    /// Something was done, or failed: the words for the status line.
    void statusChanged(const QString &message);
    /// The preview has opened and wants to be seen.
    void previewOpened(QWidget *preview);

    void installPressed();
    void uninstallPressed();
    void confirmPressed();
    void cancelPressed();

protected:
    explicit HookSection(const QString &title);

    void setLine(const QString &text);
    /// Puts a widget between the line and the buttons.
    void addBelowLine(QWidget *widget);
    /// Shows or hides the install and uninstall buttons.
    void setButtonsVisible(bool isVisible);

    /// Opens the preview on the new text of the installer's file.
    void openPreview(const HookInstaller &installer, const QString &text);
    /// Closes the preview, and gives the keyboard back to the buttons.
    void closePreview();

private:
    QLabel *const m_line;
    QPushButton *const m_install;
    QPushButton *const m_uninstall;
    HookPreview *const m_preview;
    QVBoxLayout *const m_column;
};

} // namespace tirlo
