#include <LxUIKit/RichText/LxRichTextDocumentBuilder_p.h>

#include <LxUIKit/RichText/LxRecentRing_p.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>

#include <QHash>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>

namespace {

// What Qt's HTML reader makes of one kind of tag: the format of its characters and whether it
// keeps white space (pre-wrap) or collapses it.
struct PreparedFormat {
    bool bValid = false;
    bool bKeepSpace = false;
    QTextCharFormat format;
};

// Prepared formats by tag. Keys hold resolved colours, so a theme change adds new ones; the table
// is dropped when it grows past what a few themes and configurations need.
constexpr int kMaxPrepared = 256;
QHash<QString, PreparedFormat>& PreparedFormats() {
    static QHash<QString, PreparedFormat> s_formats;
    return s_formats;
}

// Characters the HTML reader makes of an entity ("&amp;" and so on), asked of the reader once.
QString DecodeEntity(const QString& entity) {
    static QHash<QString, QString> s_entities;
    auto it = s_entities.constFind(entity);
    if (it != s_entities.constEnd())
        return *it;
    QTextDocument doc;
    doc.setHtml(QLatin1String("<span>") + entity + QLatin1String("</span>"));
    return *s_entities.insert(entity, doc.begin().text());  // toPlainText would turn U+00A0 into a blank
}

PreparedFormat ReadSample(const QString& strSampleHtml, bool bPicture) {
    PreparedFormat out;
    QTextDocument doc;
    doc.setHtml(strSampleHtml);
    const QTextBlock block = doc.begin();
    if (doc.blockCount() != 1)
        return out;
    auto it = block.begin();
    if (it.atEnd())
        return out;
    const QTextFragment f = it.fragment();
    ++it;
    if (!it.atEnd())
        return out;  // more than one format: not a shape this builder knows
    const QString text = f.text();
    QTextCharFormat format = f.charFormat();
    if (bPicture) {
        if (text != QString(QChar::ObjectReplacementCharacter) || !format.isImageFormat())
            return out;
        // The picture's object belongs to the sample document; the fill makes its own.
        format.clearProperty(QTextFormat::ObjectIndex);
        // Emoticons are drawn by their handler and show no tool tip (as CLxRichText marks them
        // after reading HTML).
        if (format.toolTip() == CLxRichTextSnippetEmoticon::m_kStrEmotionFlag) {
            format.clearProperty(QTextFormat::TextToolTip);
            format.setObjectType(CLxRichText::kEmotionObjectType);
        }
    } else if (text == QLatin1String("x \t x")) {
        out.bKeepSpace = true;
    } else if (text != QLatin1String("x x")) {
        return out;
    }
    out.format = format;
    out.bValid = true;
    return out;
}

const PreparedFormat& Prepared(const QString& strKey, const QString& strSampleHtml, bool bPicture) {
    QHash<QString, PreparedFormat>& formats = PreparedFormats();
    auto it = formats.constFind(strKey);
    if (it != formats.constEnd())
        return *it;
    if (formats.size() >= kMaxPrepared)
        formats.clear();
    return *formats.insert(strKey, ReadSample(strSampleHtml, bPicture));
}

// `<a href="N"` at the start of an opening tag: N, and where it ends; -1 without one.
int HrefEnd(const QStringRef& html, QString* pHref) {
    static const QLatin1String kOpen("<a href=\"");
    if (!html.startsWith(kOpen))
        return -1;
    const int start = kOpen.size();
    int i = start;
    while (i < html.size() && html.at(i).isDigit())
        ++i;
    if (i == start || i >= html.size() || html.at(i) != QLatin1Char('"'))
        return -1;
    *pHref = html.mid(start, i - start).toString();
    return i;
}

// The last few text tags seen, compared in place: a fill of one style builds no key at all.
struct RecentTag {
    QString strTail;  // the opening tag after its href, and the closing tag
    QString strClose;
    PreparedFormat prepared;
};
CLxRecentRing<RecentTag, 4>& Recent() {
    static CLxRecentRing<RecentTag, 4> s_recent;  // made on first use, not when the library loads
    return s_recent;
}

// Shown text holds complete entities and "<br>" only; anything else is left to the HTML reader.
bool IsPlainShownText(const QString& shown) {
    for (int i = 0; i < shown.size(); ++i) {
        const QChar c = shown.at(i);
        if (c == QLatin1Char('<')) {
            if (shown.midRef(i, 4) != QLatin1String("<br>"))
                return false;
            i += 3;
        } else if (c == QLatin1Char('&')) {
            int end = i + 1;
            while (end < shown.size() && (shown.at(end).isLetterOrNumber() || shown.at(end) == QLatin1Char('#')))
                ++end;
            if (end >= shown.size() || shown.at(end) != QLatin1Char(';') || end == i + 1)
                return false;
            i = end;
        } else if (c == QLatin1Char('>')) {
            return false;
        }
    }
    return true;
}

bool ReadTextPiece(const QString& html, const QString& shown, CLxRichTextDocumentBuilder::Piece& piece) {
    const int open = html.indexOf(QLatin1Char('>'));
    if (open < 0 || !html.startsWith(QLatin1Char('<')))
        return false;
    QLatin1String close("</span>");
    if (!html.endsWith(close)) {
        close = QLatin1String("</a>");
        if (!html.endsWith(close))
            return false;
    }
    const int textLength = html.size() - open - 1 - close.size();
    if (textLength != shown.size() || html.midRef(open + 1, textLength) != shown || !IsPlainShownText(shown))
        return false;
    const QStringRef opening = html.leftRef(open + 1);
    if (opening.indexOf(QLatin1Char('<'), 1) >= 0)
        return false;
    const int hrefEnd = HrefEnd(opening, &piece.strHref);
    // Only an anchor's href means something to the reader, and only the leading one is handled.
    if (hrefEnd < 0 && opening.startsWith(QLatin1String("<a")))
        return false;
    const QStringRef tail = hrefEnd < 0 ? opening : opening.mid(hrefEnd);
    piece.bPicture = false;
    piece.strText = shown;
    const PreparedFormat* pPrepared = nullptr;
    CLxRecentRing<RecentTag, 4>& recentTags = Recent();
    if (const RecentTag* pRecent =
            recentTags.Find([&](const RecentTag& r) { return r.strTail == tail && r.strClose == close; }))
        pPrepared = &pRecent->prepared;
    if (!pPrepared) {
        const QString key = (hrefEnd < 0 ? QString() : QStringLiteral("<a href")) + tail.toString() + close;
        RecentTag& slot = recentTags.Next();
        slot.strTail = tail.toString();
        slot.strClose = close;
        slot.prepared = Prepared(key, opening.toString() + QLatin1String("x \t x") + close, false);
        pPrepared = &slot.prepared;
    }
    piece.bKeepSpace = pPrepared->bKeepSpace;
    piece.format = pPrepared->format;
    return pPrepared->bValid;
}

bool ReadPicturePiece(const QString& html, CLxRichTextDocumentBuilder::Piece& piece) {
    static const QLatin1String kSrc("<img src=\"");
    const int img = html.indexOf(kSrc);
    if (img < 0 || html.indexOf(kSrc, img + 1) >= 0)
        return false;
    const int srcStart = img + kSrc.size();
    const int srcEnd = html.indexOf(QLatin1Char('"'), srcStart);
    if (srcEnd < 0)
        return false;
    const QString path = html.mid(srcStart, srcEnd - srcStart);
    // Paths the reader would change (entities, control characters) are left to it.
    for (QChar c : path)
        if (c == QLatin1Char('&') || c.unicode() < 0x20)
            return false;
    // Nothing but tags around the picture.
    for (int i = 0; i < html.size();) {
        if (html.at(i) != QLatin1Char('<'))
            return false;
        const int end = i == img ? html.indexOf(QLatin1Char('>'), srcEnd) : html.indexOf(QLatin1Char('>'), i);
        if (end < 0)
            return false;
        i = end + 1;
    }
    const int hrefEnd = HrefEnd(html.midRef(0), &piece.strHref);
    if (hrefEnd < 0 && html.contains(QLatin1String("href")))
        return false;
    QString key = html;
    key.replace(srcStart, srcEnd - srcStart, QString());
    if (hrefEnd >= 0)
        key = QLatin1String("<a href") + key.mid(hrefEnd);
    piece.bPicture = true;
    piece.strText = path;
    QString sample = html;
    sample.replace(srcStart, srcEnd - srcStart, QStringLiteral("x"));
    const PreparedFormat& prepared = Prepared(key, sample, true);
    piece.format = prepared.format;
    return prepared.bValid;
}

// The reader's white-space state between pieces.
enum class Space { Keep, CollapseNext, Drop };

}  // namespace

bool CLxRichTextDocumentBuilder::Prepare(const CLxRichText::SnippetList& vecSnippets, std::vector<Piece>& vecPieces) {
    vecPieces.clear();
    vecPieces.reserve(vecSnippets.size());
    for (const auto& snippet : vecSnippets) {
        if (!snippet)
            continue;
        const QString html = snippet->GetHtml();
        if (html.isEmpty())
            continue;
        Piece piece;
        if (!ReadTextPiece(html, snippet->GetShownText(), piece) && !ReadPicturePiece(html, piece))
            return false;
        if (!piece.strHref.isEmpty())
            piece.format.setAnchorHref(piece.strHref);
        vecPieces.push_back(std::move(piece));
    }
    return true;
}

void CLxRichTextDocumentBuilder::Fill(QTextDocument* pDoc, const std::vector<Piece>& vecPieces) {
    if (!pDoc->isEmpty())
        pDoc->clear();
    if (vecPieces.empty())
        return;
    QTextCursor cursor(pDoc);
    cursor.beginEditBlock();
    Space space = Space::Drop;  // white space at the start of the document goes
    QString text;
    for (const Piece& piece : vecPieces) {
        if (piece.bPicture) {
            QTextImageFormat image = piece.format.toImageFormat();
            image.setName(piece.strText);
            cursor.insertImage(image, QTextFrameFormat::InFlow);
            space = Space::CollapseNext;
            continue;
        }
        text.clear();
        text.reserve(piece.strText.size());
        if (piece.bKeepSpace)
            space = Space::Keep;
        // Blanks follow the reader's rules: kept in pre-wrap text, else each run becomes one blank,
        // and none is kept at the start of the document, after a line break or after another.
        auto put = [&](QChar c) {
            const bool bSpace = c.isSpace() && c != QChar::Nbsp && c != QChar::ParagraphSeparator;
            if (piece.bKeepSpace || !bSpace) {  // pre-wrap text after a line break keeps its blanks too
                space = Space::Keep;
                text += c;
            } else if (space != Space::Drop) {
                space = Space::Drop;
                text += QLatin1Char(' ');
            }
        };
        const QString& shown = piece.strText;
        for (int i = 0; i < shown.size(); ++i) {
            const QChar c = shown.at(i);
            if (c == QLatin1Char('<')) {  // "<br>"
                text += QChar(QChar::LineSeparator);
                i += 3;
                space = Space::Drop;
            } else if (c == QLatin1Char('&')) {
                const int end = shown.indexOf(QLatin1Char(';'), i);
                const QString decoded = DecodeEntity(shown.mid(i, end + 1 - i));
                for (QChar d : decoded)
                    put(d);
                i = end;
            } else {
                put(c);
            }
        }
        if (!text.isEmpty())
            cursor.insertText(text, piece.format);
    }
    cursor.endEditBlock();
}
