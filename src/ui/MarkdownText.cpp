#include "MarkdownText.h"

#include "Style.h"
#include "core/HiddenMarks.h"

#include <QImage>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>

#include <algorithm>
#include <utility>

namespace tirlo {

namespace {

constexpr double documentMargin = 4;

/// Beyond these the import takes time that would be felt.
constexpr qsizetype longestMarkdown = 16 * 1024;
constexpr qsizetype mostLinks = 100;
constexpr qsizetype mostBars = 400;
constexpr int deepestIndent = 4;
constexpr double widestQuote = 80;

/// What a link or a picture says besides its words: where it leads to, and its title.
QString hiddenWordsOf(const QTextCharFormat &format, const QString &words)
{
    QStringList hidden;
    if (format.isImageFormat())
        hidden
            = {format.property(QTextFormat::ImageAltText).toString(), format.toImageFormat().name(),
               format.property(QTextFormat::ImageTitle).toString()};
    else if (format.isAnchor() && format.anchorHref() != words)
        hidden = {format.anchorHref(), format.toolTip()};
    hidden.removeAll(QString());
    return hidden.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(hidden.join(u' '));
}

/// Links come in a colour for white paper, and nothing that they hold stays unseen; a picture is
/// what it says of itself.
void showLinks(const QTextBlock &block)
{
    struct Link
    {
        int begin;
        int end;
        bool isImage;
        QString hidden;
    };
    QList<Link> links;
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const QTextFragment text = piece.fragment();
        const QTextCharFormat format = text.charFormat();
        if (format.isAnchor() || format.isImageFormat())
            links.prepend({text.position(), text.position() + text.length(), format.isImageFormat(),
                           hiddenWordsOf(format, text.text())});
    }
    QTextCharFormat tint;
    tint.setForeground(Style::link);
    for (const Link &link : std::as_const(links)) {
        QTextCursor cursor(block);
        cursor.setPosition(link.end);
        cursor.insertText(link.hidden, QTextCharFormat());
        cursor.setPosition(link.begin);
        cursor.setPosition(link.end, QTextCursor::KeepAnchor);
        if (link.isImage)
            cursor.removeSelectedText();
        else
            cursor.mergeCharFormat(tint);
    }
}

/// Headings not much larger than the rest, and nothing that reaches over the right edge.
void layOutCalmly(const QTextBlock &block)
{
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    format.setNonBreakableLines(false);
    format.setIndent(std::min(format.indent(), deepestIndent));
    format.setLeftMargin(std::min(format.leftMargin(), widestQuote));
    cursor.setBlockFormat(format);
    if (QTextList *list = block.textList(); list && list->format().indent() > deepestIndent) {
        QTextListFormat nearer = list->format();
        nearer.setIndent(deepestIndent);
        list->setFormat(nearer);
    }
    if (format.headingLevel() == 0)
        return;
    QTextCharFormat size;
    size.setProperty(QTextFormat::FontSizeAdjustment, format.headingLevel() == 1 ? 1 : 0);
    cursor.select(QTextCursor::BlockUnderCursor);
    cursor.mergeCharFormat(size);
}

/// Whether all of it would be seen once rendered: definitions of links are not, nor what stands
/// behind the language of a block of code, nor what an entity hides.
bool isWhollySeen(const QString &markdown)
{
    static const QRegularExpression unseen(QStringLiteral(
        "\\[[^\\]]*\\]:|(```|~~~)[`~]*[ \\t]*[^\\s`]+[ \\t]+\\S|&(#|[A-Za-z])\\w*;"));
    return markdown.size() <= longestMarkdown && markdown.count(QLatin1String("](")) <= mostLinks
        && markdown.count(u'|') <= mostBars && !unseen.match(markdown).hasMatch();
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

bool MarkdownText::showMarkdown(const QString &markdown)
{
    if (!isWhollySeen(markdown))
        return false;
    // Made up apart, where nothing is laid out at each touch.
    auto *fresh = new QTextDocument(this);
    fresh->setUndoRedoEnabled(false);
    fresh->setDefaultFont(document()->defaultFont());
    fresh->setDocumentMargin(documentMargin);
    fresh->setMarkdown(withoutHiddenMarks(markdown),
                       QTextDocument::MarkdownFeatures(QTextDocument::MarkdownDialectGitHub)
                           | QTextDocument::MarkdownNoHTML);
    for (QTextBlock block = fresh->begin(); block.isValid(); block = block.next()) {
        showLinks(block);
        layOutCalmly(block);
    }
    QTextDocument *old = document();
    const bool isOurs = old->parent() == this;
    setDocument(fresh);
    if (isOurs)
        delete old;
    moveCursor(QTextCursor::Start);
    return true;
}

QVariant MarkdownText::loadResource(int /*type*/, const QUrl & /*name*/)
{
    // With nothing for an answer the document would open a file of that name.
    return QImage(1, 1, QImage::Format_ARGB32);
}

} // namespace tirlo
