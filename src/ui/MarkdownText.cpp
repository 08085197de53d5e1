#include "MarkdownText.h"

#include "Style.h"
#include "core/HiddenMarks.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <utility>

namespace tirlo {

namespace {

constexpr double documentMargin = 4;

/// What a link or a picture says besides its words: where it leads to, and its title.
QString hiddenWordsOf(const QTextFragment &piece)
{
    const QTextCharFormat format = piece.charFormat();
    QStringList words;
    if (format.isImageFormat())
        words
            = {format.property(QTextFormat::ImageAltText).toString(), format.toImageFormat().name(),
               format.property(QTextFormat::ImageTitle).toString()};
    else if (format.isAnchor() && format.anchorHref() != piece.text())
        words = {format.anchorHref(), format.toolTip()};
    words.removeAll(QString());
    return words.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(words.join(u' '));
}

/// Links come in a colour for white paper, and nothing that they or pictures hold stays unseen.
void showLinks(const QTextBlock &block)
{
    struct Link
    {
        int begin;
        int end;
        QString hidden;
    };
    QList<Link> links;
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const QTextFragment text = piece.fragment();
        if (text.charFormat().isAnchor() || text.charFormat().isImageFormat())
            links.prepend({text.position(), text.position() + text.length(), hiddenWordsOf(text)});
    }
    QTextCharFormat tint;
    tint.setForeground(Style::link);
    for (const Link &link : std::as_const(links)) {
        QTextCursor cursor(block);
        cursor.setPosition(link.end);
        cursor.insertText(link.hidden, QTextCharFormat());
        cursor.setPosition(link.begin);
        cursor.setPosition(link.end, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(tint);
    }
}

/// Markdown with its link definitions as text, since they would not be seen otherwise.
QString withoutDefinitions(const QString &markdown)
{
    static const QRegularExpression definition(QStringLiteral("^ {0,3}\\[[^\\]]+\\]:"));
    static const QRegularExpression fence(QStringLiteral("^ {0,3}(```|~~~)"));
    QStringList lines = markdown.split(u'\n');
    bool isCode = false;
    for (QString &line : lines) {
        if (fence.match(line).hasMatch())
            isCode = !isCode;
        else if (!isCode && definition.match(line).hasMatch())
            line.insert(line.indexOf(u'['), u'\\');
    }
    return lines.join(u'\n');
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
    document()->setMarkdown(withoutDefinitions(withoutHiddenMarks(markdown)),
                            QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub)
                                | QTextDocument::MarkdownNoHTML);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        showLinks(block);
    moveCursor(QTextCursor::Start);
}

QVariant MarkdownText::loadResource(int /*type*/, const QUrl & /*name*/)
{
    return {};
}

} // namespace tirlo
