#include <LxUIKit/RichText/LxRichTextSnippetStock.h>

void CLxRichTextSnippetStock::CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) {
    if (!spConfig)
        return;
    const std::shared_ptr<LxRichTextConfig> cfg = EffectiveConfig(spConfig);
    m_strHtml = AnchorHtml(index, FormatStyleHtml(cfg->bBold, cfg->bUnderline, cfg->strStockColor, cfg->strFontToken),
                           m_strShownText);
}

void CLxRichTextSnippetStock::SetStockData(uint64_t stockID, const QString& stockName) {
    CLxRichTextDataStock::SetStockData(stockID, stockName);
    m_strShownText = ShownTextOf({stockName, m_strDisplayText, QString::number(stockID)});
}

void CLxRichTextSnippetStock::SetStockIdAndDisplayText(uint64_t stockID, const QString& displayText) {
    CLxRichTextDataStock::SetStockIdAndDisplayText(stockID, displayText);
    m_strShownText = ShownTextOf({displayText, m_strStockName, QString::number(stockID)});
}

bool CLxRichTextSnippetStock::FromProtoValue(const core::CProtoValue& value) {
    CLxRichTextDataStock::FromProtoValue(value);
    m_strShownText = ShownTextOf({m_strDisplayText, m_strStockName, QString::number(m_u64StockID)});
    return true;
}
