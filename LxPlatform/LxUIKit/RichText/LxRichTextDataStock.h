#pragma once
// A stock (kind 4): name, id and the text shown for it.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/ILxRichTextData.h>

#include <cstdint>

class LXUIKIT_EXPORT CLxRichTextDataStock : public ILxRichTextData {
public:
    CLxRichTextDataStock() = default;

    int GetType() const override { return LxRichTextDataType_Stock; }
    QString ToHtml() override;  // "<span>display text</span>", unescaped
    QString ToPlainText() override { return GetDisplayText(); }
    core::CProtoValue ToProtoValue() override;
    bool FromProtoValue(const core::CProtoValue& value) override;

    virtual void SetStockData(uint64_t stockID, const QString& stockName);
    virtual void SetStockIdAndDisplayText(uint64_t stockID, const QString& displayText);

    uint64_t GetStockID() const { return m_u64StockID; }
    const QString& GetStockName() const { return m_strStockName; }
    // The display text as stored (nothing is derived from the name).
    const QString& GetDisplayText() const { return m_strDisplayText; }

protected:
    QString m_strStockName;
    uint64_t m_u64StockID = 0;
    QString m_strDisplayText;
};
