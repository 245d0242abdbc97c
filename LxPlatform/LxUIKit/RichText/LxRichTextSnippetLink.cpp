#include <LxUIKit/RichText/LxRichTextSnippetLink.h>

void CLxRichTextSnippetLink::CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) {
    if (!spConfig)
        return;
    const std::shared_ptr<LxRichTextConfig> cfg = EffectiveConfig(spConfig);
    m_strHtml = AnchorHtml(index, FormatStyleHtml(cfg->bBold, cfg->bUnderline, cfg->strLinkColor, cfg->strFontToken),
                           m_strShownText, "  outline: none;");
}

void CLxRichTextSnippetLink::SetLinkData(const QString& urlTitle, const QString& url, LinkType linkType) {
    CLxRichTextDataLink::SetLinkData(urlTitle, url, linkType);
    RefreshShownText();
}

bool CLxRichTextSnippetLink::FromProtoValue(const core::CProtoValue& value) {
    CLxRichTextDataLink::FromProtoValue(value);
    RefreshShownText();
    return true;
}

void CLxRichTextSnippetLink::RefreshShownText() {
    m_strShownText = ShownTextOf({m_strUrlTitle, m_strUrl, QString::fromLatin1(kFallbackLinkText)});
    m_strShownText.replace(QLatin1Char(' '), QLatin1String("&nbsp;"));
}
