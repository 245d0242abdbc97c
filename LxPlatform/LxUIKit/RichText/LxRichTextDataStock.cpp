#include <LxUIKit/RichText/LxRichTextDataStock.h>

QString CLxRichTextDataStock::ToHtml() { return QStringLiteral("<span>%1</span>").arg(m_strDisplayText); }

core::CProtoValue CLxRichTextDataStock::ToProtoValue() {
    core::CProtoValue value;
    value["type"] = core::CProtoValue(int(LxRichTextDataType_Stock));
    value["stockid"] = core::CProtoValue(static_cast<unsigned long long>(m_u64StockID));
    value["stockname"] = core::CProtoValue(m_strStockName.toStdString());
    value["displaytext"] = core::CProtoValue(m_strDisplayText.toStdString());
    return value;
}

bool CLxRichTextDataStock::FromProtoValue(const core::CProtoValue& value) {
    m_u64StockID = value["stockid"].asUInt64();
    m_strStockName = QString::fromStdString(value["stockname"].asString());
    m_strDisplayText = QString::fromStdString(value["displaytext"].asString());
    return true;
}

void CLxRichTextDataStock::SetStockData(uint64_t stockID, const QString& stockName) {
    m_u64StockID = stockID;
    m_strStockName = stockName;
}

void CLxRichTextDataStock::SetStockIdAndDisplayText(uint64_t stockID, const QString& displayText) {
    m_u64StockID = stockID;
    m_strDisplayText = displayText;
}
