#pragma once

#include <QGroupBox>

#include <functional>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace tirlo {

class HookInstaller;
class HookPreview;
struct HookChange;

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

protected:
    /// The installer outlives the section.
    explicit HookSection(HookInstaller &installer);

    virtual void install() = 0;
    virtual void uninstall() = 0;
    /// Shows that what was previewed has been written, and returns the words for the status line.
    virtual QString showWritten() = 0;

    void setLine(const QString &text);
    /// Puts a widget between the line and the buttons.
    void addBelowLine(QWidget *widget);
    /// Shows or hides the install and uninstall buttons.
    void setButtonsVisible(bool isVisible);
    /// Makes the button run the operation, and have the keyboard again after its preview.
    void connectButton(QPushButton *button, const std::function<void()> &operation);

    /// Opens the preview on the change; where none can be built, `failure` takes the reason as %1.
    void openPreview(const std::function<HookChange()> &build, const QString &failure);
    /// Drops what was previewed, and closes the preview.
    void cancel();
    /// Runs what writes the file; false, with the reason in the status line, when it fails.
    bool writes(const std::function<void()> &write);

private:
    void confirm();
    /// Closes the preview, and gives the keyboard back to the button that opened it.
    void closePreview();

    HookInstaller &m_installer;
    QLabel *const m_line;
    QPushButton *const m_install;
    QPushButton *const m_uninstall;
    HookPreview *const m_preview;
    QVBoxLayout *const m_column;
    /// The button pressed last.
    QPushButton *m_opener;
};

} // namespace tirlo
