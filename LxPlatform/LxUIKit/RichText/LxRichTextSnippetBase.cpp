#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

#include <LxStdUI/FontToken.h>
#include <LxStdUI/ResProvider.h>
#include <LxUIKit/RichText/ILxRichTextData.h>
#include <LxUIKit/RichText/LxRecentRing_p.h>

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature hosts' snippets override
void CLxRichTextSnippetBase::CreatHtml(unsigned int, std::shared_ptr<LxRichTextConfig>) { m_strHtml.clear(); }

ILxRichTextData* CLxRichTextSnippetBase::GetData() { return dynamic_cast<ILxRichTextData*>(this); }

namespace {

QString BuildStyleHtml(bool bBold, bool bUnderline, const QString& strColor, bool bHasColor,
                       const QString& strFontToken) {
    QString style;
    style.reserve(96);
    if (bBold)
        style += QLatin1String("font-weight:bold;");
    style += QLatin1String("text-decoration:");
    style += bUnderline ? QLatin1String("underline;") : QLatin1String("none;");
    if (bHasColor)
        style += QLatin1String("color:") + strColor + QLatin1Char(';');
    if (!strFontToken.isEmpty()) {
        // The token sits inside a single-quoted attribute: keep only identifier characters.
        QString token;
        token.reserve(strFontToken.size());
        for (QChar c : strFontToken)
            if (c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('-'))
                token += c;
        style += QLatin1String(" font-token:") + token + QLatin1Char(';');
        const int px = LFontTokenLoader::pixelSize(strFontToken);
        if (px > 0)
            style += QLatin1String(" font-size:") + QString::number(px) + QLatin1String("px;");
    }
    return QLatin1String(" style =' ") + style + QLatin1Char('\'');
}

// The last styles built: a text of many snippets asks for the same few again and again. The
// colour is resolved on every call, so a theme change never finds an old style.
struct RecentStyle {
    bool bBold = false;
    bool bUnderline = false;
    bool bHasColor = false;
    QString strColor;
    QString strFontToken;
    QString strStyle;
};
CLxRecentRing<RecentStyle, 8>& Recent() {
    static CLxRecentRing<RecentStyle, 8> s_recent;  // made on first use, not when the library loads
    return s_recent;
}

}  // namespace

QString CLxRichTextSnippetBase::FormatStyleHtml(bool bBold, bool bUnderline, const QString& strColorKey,
                                                const QString& strFontToken) {
    QString color;
    const bool bHasColor = !strColorKey.isEmpty();
    if (bHasColor) {
        std::shared_ptr<const lx_ui_res::ColorString> spColor;
        lx_ui_res::Provider::instance()->get(spColor, strColorKey);
        if (!spColor)
            spColor = std::make_shared<const lx_ui_res::ColorString>();
        color = spColor->str();
    }
    CLxRecentRing<RecentStyle, 8>& recentStyles = Recent();
    if (const RecentStyle* pRecent = recentStyles.Find([&](const RecentStyle& r) {
            return !r.strStyle.isNull() && r.bBold == bBold && r.bUnderline == bUnderline && r.bHasColor == bHasColor &&
                   r.strColor == color && r.strFontToken == strFontToken;
        }))
        return pRecent->strStyle;
    RecentStyle& slot = recentStyles.Next();
    slot = RecentStyle{bBold, bUnderline,   bHasColor,
                       color, strFontToken, BuildStyleHtml(bBold, bUnderline, color, bHasColor, strFontToken)};
    return slot.strStyle;
}

namespace {

// Characters a document reserves for itself or that are no characters at all: Qt marks frame
// starts and ends with U+FDD0 and U+FDD1 and inline objects with U+FFFC, so any of them in text
// would be read as structure. All non-characters go (U+FDD0..U+FDEF and the last two code points of
// every plane); `i` may step over the low half of a pair.
bool IsReservedAt(const QString& text, int& i) {
    const ushort u = text.at(i).unicode();
    if ((u >= 0xFDD0 && u <= 0xFDEF) || u == 0xFFFE || u == 0xFFFF || u == QChar::ObjectReplacementCharacter)
        return true;
    if (QChar::isHighSurrogate(u) && i + 1 < text.size() && QChar::isLowSurrogate(text.at(i + 1).unicode())) {
        const uint cp = QChar::surrogateToUcs4(u, text.at(i + 1).unicode());
        if ((cp & 0xFFFE) == 0xFFFE) {
            ++i;
            return true;
        }
    }
    return false;
}

}  // namespace

// One pass with the same result as the replacements applied one after another: no replacement
// produces a character that a later one would touch.
QString CLxRichTextSnippetBase::ReplaceHtmlCharacters(const QString& strText) {
    QString out;
    out.reserve(strText.size() + strText.size() / 8 + 8);
    const int n = strText.size();
    for (int i = 0; i < n; ++i) {
        const QChar c = strText.at(i);
        if (IsReservedAt(strText, i))
            continue;
        switch (c.unicode()) {
        case '&': out += QLatin1String("&amp;"); break;
        case '<': out += QLatin1String("&lt;"); break;
        case '>': out += QLatin1String("&gt;"); break;
        case '"': out += QLatin1String("&quot;"); break;
        case '\'': out += QLatin1String("&apos;"); break;
        case '`': out += QLatin1String("&#96;"); break;
        case '/': out += QLatin1String("&#x2F;"); break;
        case '\r':
            if (i + 1 < n && strText.at(i + 1) == QLatin1Char('\n'))
                ++i;
            out += QLatin1String("<br>");
            break;
        case '\n':
        case QChar::LineSeparator:       // the document's own line break: the same as a new line
        case QChar::ParagraphSeparator:  // would start a block; a snippet stays in its paragraph
            out += QLatin1String("<br>");
            break;
        default: out += c;
        }
    }
    return out;
}

namespace {
bool IsWhiteSpace(QChar c) {
    const ushort u = c.unicode();
    return (u >= 9 && u <= 13) || u == 32 || u == 133 || u == 160 || c.isSpace();
}
}  // namespace

QString CLxRichTextSnippetBase::insertZeroWidthSpaces(const QString& strText) {
    QString out;
    out.reserve(strText.size() + 4);
    bool bInRun = false;
    for (QChar c : strText) {
        out += c;
        if (IsWhiteSpace(c)) {
            if (bInRun)
                out += QChar(0x200B);
            bInRun = true;
        } else {
            bInRun = false;
        }
    }
    return out;
}

bool CLxRichTextSnippetBase::IsBlankText(const QString& strText) {
    for (int i = 0; i < strText.size(); ++i) {
        if (IsReservedAt(strText, i))
            continue;
        const QChar c = strText.at(i);
        const QChar::Category cat = c.category();
        if (c.isSpace() || cat == QChar::Other_Format || cat == QChar::Other_Control)
            continue;
        return false;
    }
    return true;
}

QString CLxRichTextSnippetBase::ShownTextOf(std::initializer_list<QString> candidates) {
    for (const QString& candidate : candidates)
        if (!IsBlankText(candidate))
            return ReplaceHtmlCharacters(candidate);
    return QString();
}

QString CLxRichTextSnippetBase::EscapeHtmlAttribute(const QString& strValue) {
    QString out;
    out.reserve(strValue.size() + 8);
    for (QChar c : strValue) {
        switch (c.unicode()) {
        case '&': out += QLatin1String("&amp;"); break;
        case '<': out += QLatin1String("&lt;"); break;
        case '>': out += QLatin1String("&gt;"); break;
        case '"': out += QLatin1String("&quot;"); break;
        case '\'': out += QLatin1String("&#39;"); break;
        default: out += c;
        }
    }
    return out;
}

QString CLxRichTextSnippetBase::AnchorHtml(unsigned int index, const QString& strStyle, const QString& strText,
                                           const char* szExtra) {
    QString html;
    html.reserve(strStyle.size() + strText.size() + 32);
    // Appended piece by piece: one allocation instead of a temporary per "+".
    html += QLatin1String("<a href=\"");
    html += QString::number(index);
    html += QLatin1Char('"');
    html += QLatin1String(szExtra);
    html += strStyle;
    html += QLatin1Char('>');
    html += strText;
    html += QLatin1String("</a>");
    return html;
}
