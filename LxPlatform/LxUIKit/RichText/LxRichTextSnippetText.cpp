#include <LxUIKit/RichText/LxRichTextSnippetText.h>

void CLxRichTextSnippetText::CreatHtml(unsigned int, std::shared_ptr<LxRichTextConfig> spConfig) {
    if (!spConfig)
        return;
    const std::shared_ptr<LxRichTextConfig> cfg = EffectiveConfig(spConfig);
    const QString style = FormatStyleHtml(cfg->bBold, cfg->bUnderline, cfg->strTextColor, cfg->strFontToken);
    m_strHtml.clear();
    m_strHtml.reserve(style.size() + m_strShownText.size() + 48);
    m_strHtml += QLatin1String("<span  style=\"white-space: pre-wrap;\" ");
    m_strHtml += style;
    m_strHtml += QLatin1Char('>');
    m_strHtml += m_strShownText;
    m_strHtml += QLatin1String("</span>");
}

void CLxRichTextSnippetText::SetTextData(const QString& text) {
    CLxRichTextDataText::SetTextData(text);
    m_strShownText = insertZeroWidthSpaces(ReplaceHtmlCharacters(text));
}

bool CLxRichTextSnippetText::FromProtoValue(const core::CProtoValue& value) {
    CLxRichTextDataText::FromProtoValue(value);
    m_strShownText = insertZeroWidthSpaces(ReplaceHtmlCharacters(m_strText));
    return true;
}
