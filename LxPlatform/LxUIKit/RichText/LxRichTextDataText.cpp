#include <LxUIKit/RichText/LxRichTextDataText.h>

QString CLxRichTextDataText::ToHtml() { return QStringLiteral("<span>%1</span>").arg(m_strText); }

core::CProtoValue CLxRichTextDataText::ToProtoValue() {
    core::CProtoValue value;
    value["type"] = core::CProtoValue(int(LxRichTextDataType_Text));
    value["text"] = core::CProtoValue(m_strText.toStdString());
    return value;
}

bool CLxRichTextDataText::FromProtoValue(const core::CProtoValue& value) {
    m_strText = QString::fromStdString(value["text"].asString());
    return true;
}

void CLxRichTextDataText::SetTextData(const QString& text) { m_strText = text; }
