#pragma once

#include <QTextEdit>

namespace tirlo {

/// A box that shows a foreign text in Markdown, to be read.
///
/// Nothing in it loads or runs: raw HTML shows as it was written, pictures as nothing, and links
/// can't be followed. Hidden marks show as "�".
class MarkdownText final : public QTextEdit
{
    Q_OBJECT

public:
    explicit MarkdownText(QWidget *parent = nullptr);

    void showMarkdown(const QString &markdown);

protected:
    QVariant loadResource(int type, const QUrl &name) override;
};

} // namespace tirlo
