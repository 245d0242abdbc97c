#include <LxUIKit/RichText/LxRichTextDataPortfolio.h>

QString CLxRichTextDataPortfolio::ToHtml() { return QStringLiteral("<span>%1</span>").arg(m_strPortfolioName); }

core::CProtoValue CLxRichTextDataPortfolio::ToProtoValue() {
    core::CProtoValue value;
    value["type"] = core::CProtoValue(int(LxRichTextDataType_Portfolio));
    value["portfolioid"] = core::CProtoValue(static_cast<unsigned long long>(m_u64PortfolioID));
    value["portfolioname"] = core::CProtoValue(m_strPortfolioName.toStdString());
    value["portfoliocode"] = core::CProtoValue(m_strPortfolioCode.toStdString());
    return value;
}

bool CLxRichTextDataPortfolio::FromProtoValue(const core::CProtoValue& value) {
    m_u64PortfolioID = value["portfolioid"].asUInt64();
    m_strPortfolioName = QString::fromStdString(value["portfolioname"].asString());
    m_strPortfolioCode = QString::fromStdString(value["portfoliocode"].asString());
    return true;
}

void CLxRichTextDataPortfolio::SetPortfolioData(uint64_t portfolioID, const QString& portfolioName,
                                                const QString& portfolioCode) {
    m_u64PortfolioID = portfolioID;
    m_strPortfolioName = portfolioName;
    m_strPortfolioCode = portfolioCode;
}
