#pragma once
// A portfolio (kind 5): code, name and id.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/ILxRichTextData.h>

#include <cstdint>

class LXUIKIT_EXPORT CLxRichTextDataPortfolio : public ILxRichTextData {
public:
    CLxRichTextDataPortfolio() = default;

    int GetType() const override { return LxRichTextDataType_Portfolio; }
    QString ToHtml() override;  // "<span>name</span>", unescaped
    QString ToPlainText() override { return m_strPortfolioName; }
    core::CProtoValue ToProtoValue() override;
    bool FromProtoValue(const core::CProtoValue& value) override;

    virtual void SetPortfolioData(uint64_t portfolioID, const QString& portfolioName, const QString& portfolioCode);

    uint64_t GetPortfolioID() const { return m_u64PortfolioID; }
    const QString& GetPortfolioCode() const { return m_strPortfolioCode; }
    const QString& GetPortfolioName() const { return m_strPortfolioName; }

protected:
    QString m_strPortfolioCode;
    QString m_strPortfolioName;
    uint64_t m_u64PortfolioID = 0;
};
