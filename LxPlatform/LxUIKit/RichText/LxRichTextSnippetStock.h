#pragma once
// Stock snippet (kind 4): an anchor in the stock colour showing the escaped stock name, or the
// escaped display text when one was given.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataStock.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

class LXUIKIT_EXPORT CLxRichTextSnippetStock : public CLxRichTextSnippetBase, public CLxRichTextDataStock {
public:
    CLxRichTextSnippetStock() : CLxRichTextSnippetBase(LxRichTextDataType_Stock) {}

    void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) override;
    void SetStockData(uint64_t stockID, const QString& stockName) override;
    void SetStockIdAndDisplayText(uint64_t stockID, const QString& displayText) override;
    bool FromProtoValue(const core::CProtoValue& value) override;
};
