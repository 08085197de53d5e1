#include "MarkdownText.h"

#include "Style.h"
#include "core/HiddenMarks.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace tirlo {

namespace {

constexpr double documentMargin = 4;

/// Links come in a colour for white paper.
void tintLinks(const QTextBlock &block)
{
    QList<std::pair<int, int>> links;
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        if (piece.fragment().charFormat().isAnchor())
            links.append({piece.fragment().position(), piece.fragment().length()});
    }
    QTextCharFormat tint;
    tint.setForeground(Style::link);
    for (const auto &[position, length] : links) {
        QTextCursor cursor(block);
        cursor.setPosition(position);
        cursor.setPosition(position + length, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(tint);
    }
}

} // namespace

MarkdownText::MarkdownText(QWidget *parent)
    : QTextEdit(parent)
{
    setReadOnly(true);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    document()->setDefaultFont(Style::font(Style::headSize));
    document()->setDocumentMargin(documentMargin);
}

void MarkdownText::showMarkdown(const QString &markdown)
{
    document()->setMarkdown(withoutHiddenMarks(markdown),
                            QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub)
                                | QTextDocument::MarkdownNoHTML);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        tintLinks(block);
    moveCursor(QTextCursor::Start);
}

QVariant MarkdownText::loadResource(int /*type*/, const QUrl & /*name*/)
{
    return {};
}

} // namespace tirlo
