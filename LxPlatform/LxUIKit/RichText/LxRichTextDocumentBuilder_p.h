#pragma once
// CLxRichTextDocumentBuilder: fills a document with the markup of a list of snippets without
// parsing HTML on every fill. Not installed.
//
// Each snippet's markup is one of two shapes: an opening tag, the escaped shown text and the
// closing tag (text, users, stocks, portfolios, links), or tags around one picture (emoji,
// emoticons, images). Apart from the anchor's index and the picture's path, the tags repeat from
// item to item, so the character format Qt's HTML reader makes of them is prepared once per tag
// (by reading a sample of it) and kept; a fill then decodes the shown text and inserts it through
// a QTextCursor with the prepared format, following the reader's white-space rules. The result is
// the document setHtml would make of the same markup, character for character and format for
// format; markup of any other shape is left to setHtml (Prepare answers false).

#include <LxUIKit/RichText/LxRichText.h>

#include <QString>
#include <QTextCharFormat>

#include <vector>

class QTextDocument;

class CLxRichTextDocumentBuilder {
public:
    // One snippet's part of the document, taken from its markup when the content is set, so
    // documents filled later (the measuring document) show the same content.
    struct Piece {
        bool bPicture = false;
        QString strHref;          // the anchor index, empty for plain text
        QString strText;          // the escaped shown text (text pieces) or the picture path
        QTextCharFormat format;   // as the HTML reader makes it, with the anchor index
        bool bKeepSpace = false;  // pre-wrap text
    };

    // Reads the pieces from the snippets' markup (built by CreatHtml); false when some markup has
    // another shape, and the document must then be filled from the HTML.
    static bool Prepare(const CLxRichText::SnippetList& vecSnippets, std::vector<Piece>& vecPieces);
    // Replaces the document's content with the pieces.
    static void Fill(QTextDocument* pDoc, const std::vector<Piece>& vecPieces);
};
