#pragma once
// A snippet: one item of a rich text together with the styled HTML that CLxRichText shows. Each
// snippet class derives from this base and from the data class of its kind, so a snippet is at
// once a data item and a piece of markup.
//
// CLxRichText numbers its snippets 0, 1, 2, ... and passes the number to CreatHtml; interactive
// snippets wrap themselves in an anchor whose href is that number, which is how a click or hover
// in the document is traced back to the snippet.
//
// Safety: user text never becomes markup. shownText is escaped (ReplaceHtmlCharacters) and every
// value that goes into an attribute (image paths) is escaped for attributes, so text that looks
// like tags, entities or anchors stays text. Text never becomes document structure either: the
// characters a document reserves for frames and objects are dropped, and paragraph separators
// become line breaks, so a snippet never opens a paragraph, frame or object.
//
// Interactive tokens always show something, so their anchor exists in the document: a user, stock
// or link whose text is empty or blank (white space, control and format characters only) shows a
// fallback: a user its nickname, else its decimal ID; a stock its name or display text, else its
// decimal ID; a link its URL, else "[link]" (kFallbackLinkText).

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextConfig.h>

#include <QString>

#include <cstdint>
#include <initializer_list>
#include <memory>

class ILxRichTextData;

class LXUIKIT_EXPORT CLxRichTextSnippetBase {
public:
    explicit CLxRichTextSnippetBase(uint32_t u32RichTextType = 0) : m_u32RichTextType(u32RichTextType) {}
    virtual ~CLxRichTextSnippetBase() = default;

    // Builds the markup of this snippet for position `index`. With an empty spConfig nothing
    // happens (the previous markup stays); otherwise the snippet's own configuration is used when
    // one was set, else spConfig. The base builds an empty string.
    virtual void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig);
    virtual QString GetHtml() { return m_strHtml; }

    // Whether a click on this snippet is accepted after Clicked was emitted; when false the press
    // travels on to the parent widget.
    void SetAcceptMousePress(bool bAccept) { m_bAcceptMousePress = bAccept; }
    bool IsAcceptMousePress() const { return m_bAcceptMousePress; }
    uint32_t GetRichTextType() const { return m_u32RichTextType; }
    void SetConfig(std::shared_ptr<LxRichTextConfig> spConfig) { m_spConfig = std::move(spConfig); }
    const std::shared_ptr<LxRichTextConfig>& GetConfig() const { return m_spConfig; }
    // The escaped text between the snippet's tags.
    const QString& GetShownText() const { return m_strShownText; }

    // The data side of this snippet (null for a bare base object).
    ILxRichTextData* GetData();

    // " style =' ...'" with, in order: "font-weight:bold;" when bold, "text-decoration:" and
    // "underline;" or "none;", "color:<css>;" for a non-empty colour key (resolved through the
    // theme's resource provider for the current theme), and " font-token:<token>;
    // font-size:<px>px;" for a non-empty token. The pixel size is the token's size in the font
    // token table: a QFont built from the token name as a family has no pixel size (-1), so the
    // table is the only real source. An unknown token keeps its "font-token" declaration and gets
    // no font-size.
    static QString FormatStyleHtml(bool bBold, bool bUnderline, const QString& strColorKey,
                                   const QString& strFontToken);
    // Escapes, in this order: & < > " ' ` / ; then turns \r\n and \r into \n and \n into <br>.
    // The line and paragraph separators (U+2028, U+2029) become <br> as well; the object
    // replacement character U+FFFC and every non-character (U+FDD0..U+FDEF, which Qt uses as frame
    // markers, and U+nFFFE / U+nFFFF of each plane) are dropped.
    static QString ReplaceHtmlCharacters(const QString& strText);
    // True when the text would show nothing: only white space, control and format characters and
    // characters ReplaceHtmlCharacters drops.
    static bool IsBlankText(const QString& strText);
    // The escaped form of the first candidate that is not blank; empty when all are.
    static QString ShownTextOf(std::initializer_list<QString> candidates);
    // Within a run of white space, puts U+200B after every white-space character but the first,
    // so long runs of blanks can break across lines while "white-space: pre-wrap" keeps them.
    static QString insertZeroWidthSpaces(const QString& strText);
    // Escapes a value for a double- or single-quoted attribute (& < > " ').
    static QString EscapeHtmlAttribute(const QString& strValue);

protected:
    // The configuration CreatHtml uses for a non-empty spConfig.
    std::shared_ptr<LxRichTextConfig> EffectiveConfig(const std::shared_ptr<LxRichTextConfig>& spConfig) const {
        return m_spConfig ? m_spConfig : spConfig;
    }
    // "<a href=\"index\"" + style + ">" + text + "</a>", the anchor every text-like token uses.
    static QString AnchorHtml(unsigned int index, const QString& strStyle, const QString& strText,
                              const char* szExtra = "");

    bool m_bAcceptMousePress = true;
    QString m_strShownText;
    QString m_strHtml;
    uint32_t m_u32RichTextType = 0;
    std::shared_ptr<LxRichTextConfig> m_spConfig;
};
