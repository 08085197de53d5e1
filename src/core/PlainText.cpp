#include "PlainText.h"

#include "HiddenMarks.h"
#include "Text.h"

#include <QTextDocument>

namespace tirlo {

namespace {

constexpr int longest = 240;
/// More than the marks around that many characters ever take.
constexpr int longestRead = 2000;

} // namespace

QString plainText(const QString &markdown)
{
    const QString beginning = firstCharacters(markdown.left(longestRead * 4), longestRead);
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    document.setMarkdown(beginning,
                         {QTextDocument::MarkdownDialectGitHub, QTextDocument::MarkdownNoHTML});
    QString text = document.toPlainText();
    text.remove(QChar::ObjectReplacementCharacter);
    text = withoutHiddenMarks(text).simplified();
    return hasMoreCharacters(text, longest) ? firstCharacters(text, longest) + u'…' : text;
}

} // namespace tirlo
