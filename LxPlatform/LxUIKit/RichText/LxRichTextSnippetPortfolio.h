#pragma once
// Portfolio snippet (kind 5): an anchor in the stock colour showing "$name(code)$", escaped.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataPortfolio.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

class LXUIKIT_EXPORT CLxRichTextSnippetPortfolio : public CLxRichTextSnippetBase, public CLxRichTextDataPortfolio {
public:
    CLxRichTextSnippetPortfolio() : CLxRichTextSnippetBase(LxRichTextDataType_Portfolio) {}

    void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) override;
    void SetPortfolioData(uint64_t portfolioID, const QString& portfolioName, const QString& portfolioCode) override;
    bool FromProtoValue(const core::CProtoValue& value) override;

private:
    void RefreshShownText();
};
