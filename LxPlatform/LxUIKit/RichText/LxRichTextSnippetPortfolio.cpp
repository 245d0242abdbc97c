#include <LxUIKit/RichText/LxRichTextSnippetPortfolio.h>

void CLxRichTextSnippetPortfolio::CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) {
    if (!spConfig)
        return;
    const std::shared_ptr<LxRichTextConfig> cfg = EffectiveConfig(spConfig);
    m_strHtml = AnchorHtml(index, FormatStyleHtml(cfg->bBold, cfg->bUnderline, cfg->strStockColor, cfg->strFontToken),
                           m_strShownText);
}

void CLxRichTextSnippetPortfolio::SetPortfolioData(uint64_t portfolioID, const QString& portfolioName,
                                                   const QString& portfolioCode) {
    CLxRichTextDataPortfolio::SetPortfolioData(portfolioID, portfolioName, portfolioCode);
    RefreshShownText();
}

bool CLxRichTextSnippetPortfolio::FromProtoValue(const core::CProtoValue& value) {
    CLxRichTextDataPortfolio::FromProtoValue(value);
    RefreshShownText();
    return true;
}

void CLxRichTextSnippetPortfolio::RefreshShownText() {
    m_strShownText = ReplaceHtmlCharacters(QStringLiteral("$%1(%2)$").arg(m_strPortfolioName, m_strPortfolioCode));
}
