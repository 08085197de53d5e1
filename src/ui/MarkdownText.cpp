#include "MarkdownText.h"

#include "Style.h"
#include "WrappedText.h"
#include "core/HiddenMarks.h"

#include <QImage>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>

#include <algorithm>
#include <memory>
#include <utility>

namespace tirlo {

namespace {

constexpr double documentMargin = 4;

/// Beyond these the import takes time that would be felt.
constexpr qsizetype longestMarkdown = 16 * 1024;
constexpr qsizetype mostLinks = 100;
constexpr qsizetype mostMarks = 1500;

bool isSoonRendered(const QString &markdown)
{
    qsizetype links = 0;
    for (const char *sign : {"](", "://", "www.", "@"})
        links += markdown.count(QLatin1String(sign));
    const auto marks = std::ranges::count_if(
        markdown, [](QChar c) { return QStringView(u"*_`~|[\n").contains(c); });
    return markdown.size() <= longestMarkdown && links <= mostLinks && marks <= mostMarks;
}

struct Link
{
    int begin;
    int end;
    bool isImage;
    QString target;
    QString title;
    QString words;
};

/// The block's links and pictures, from the last to the first; one that changes its looks is one.
QList<Link> linksOf(const QTextBlock &block)
{
    QList<Link> links;
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const QTextFragment text = piece.fragment();
        const QTextCharFormat format = text.charFormat();
        const int end = text.position() + text.length();
        if (format.isImageFormat()) {
            links.prepend({text.position(), end, true, format.toImageFormat().name(),
                           format.property(QTextFormat::ImageTitle).toString(),
                           format.property(QTextFormat::ImageAltText).toString()});
        } else if (format.isAnchor() && !links.isEmpty() && !links.first().isImage
                   && links.first().end == text.position()
                   && links.first().target == format.anchorHref()) {
            links.first().end = end;
            links.first().words += text.text();
        } else if (format.isAnchor()) {
            links.prepend(
                {text.position(), end, false, format.anchorHref(), format.toolTip(), text.text()});
        }
    }
    return links;
}

/// What isn't said by the words that are shown of it.
QString hiddenWordsOf(const Link &link)
{
    QStringList hidden{link.target, link.title};
    if (link.isImage)
        hidden.prepend(link.words);
    else if (link.target == link.words || link.target == QStringLiteral("mailto:") + link.words
             || link.target == QStringLiteral("http://") + link.words)
        hidden.removeFirst();
    hidden.removeAll(QString());
    return hidden.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(hidden.join(u' '));
}

/// Links come in a colour for white paper, and nothing that they hold stays unseen; a picture is
/// what it says of itself.
void showLinks(const QTextBlock &block)
{
    QTextCharFormat tint;
    tint.setForeground(Style::link);
    for (const Link &link : linksOf(block)) {
        QTextCursor cursor(block);
        cursor.setPosition(link.end);
        cursor.insertText(hiddenWordsOf(link), QTextCharFormat());
        cursor.setPosition(link.begin);
        cursor.setPosition(link.end, QTextCursor::KeepAnchor);
        if (link.isImage)
            cursor.removeSelectedText();
        else
            cursor.mergeCharFormat(tint);
    }
}

/// Headings not much larger than the rest, and lines of code that break at the right edge.
void layOutCalmly(const QTextBlock &block)
{
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    format.setNonBreakableLines(false);
    cursor.setBlockFormat(format);
    if (format.headingLevel() == 0)
        return;
    QTextCharFormat size;
    size.setProperty(QTextFormat::FontSizeAdjustment, format.headingLevel() == 1 ? 1 : 0);
    cursor.select(QTextCursor::BlockUnderCursor);
    cursor.mergeCharFormat(size);
}

/// The text without what may be a mark of Markdown: blanks and the punctuation of ASCII.
QString substance(QString text)
{
    return text.removeIf(
        [](QChar c) { return c.unicode() < 0x80 ? !c.isLetterOrNumber() : c.isSpace(); });
}

/// What a reader sees of the document: its text, with the numbers and the ticks of its lists.
QString seenIn(const QTextDocument &document)
{
    QString seen;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextList *list = block.textList();
        if (list && list->format().style() == QTextListFormat::ListDecimal)
            seen += list->itemText(block);
        if (block.blockFormat().marker() == QTextBlockFormat::MarkerType::Checked)
            seen += u'x';
        seen += block.text();
    }
    return seen;
}

/// Whether rendering took nothing from sight but the name of a block of code's language: not the
/// targets of links that nobody uses, nor what an entity stands for, nor a cell too many.
bool isWhollySeen(const QString &markdown, const QTextDocument &document)
{
    static const QRegularExpression language(
        QStringLiteral("(```+|~~~+)[ \\t]*[A-Za-z][\\w+#.-]{0,19}[ \\t]*$"),
        QRegularExpression::MultilineOption);
    QString written = markdown;
    return substance(written.remove(language)) == substance(seenIn(document));
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

bool MarkdownText::showMarkdown(const QString &markdown, int width)
{
    if (!isSoonRendered(markdown))
        return false;
    // Made up apart, where nothing is laid out at each touch.
    auto fresh = std::make_unique<QTextDocument>(this);
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
    if (!isWhollySeen(withoutHiddenMarks(markdown), *fresh))
        return false;

    QTextOption wrapping = fresh->defaultTextOption();
    wrapping.setWrapMode(wrapModeFor(markdown));
    fresh->setDefaultTextOption(wrapping);
    fresh->setTextWidth(width);
    if (fresh->size().width() > width)
        return false;

    const QTextDocument *old = document();
    const bool isOurs = old->parent() == this;
    setWordWrapMode(wrapping.wrapMode());
    setDocument(fresh.release());
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
