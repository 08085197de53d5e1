#pragma once

#include <QTextEdit>

namespace tirlo {

/// A box that shows a foreign text in Markdown, to be read.
///
/// Nothing in it loads or runs: raw HTML shows as it was written, pictures as what they say of
/// themselves, and links, which say where they lead to, can't be followed. Hidden marks show as "�".
class MarkdownText final : public QTextEdit
{
    Q_OBJECT

public:
    explicit MarkdownText(QWidget *parent = nullptr);

    /// False for a text that is not shown, as it is too long, or some of it would not be seen once
    /// it is rendered, so many points wide.
    [[nodiscard]] bool showMarkdown(const QString &markdown, int width);

protected:
    QVariant loadResource(int type, const QUrl &name) override;
};

} // namespace tirlo
