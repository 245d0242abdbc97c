#include <LxUIKit/RichText/LxRichTextDataEmotion.h>

#include <LxStdUI/MultiLang.h>

QString CLxRichTextDataEmotion::ToHtml() { return QStringLiteral("<img src=\"%1\" >").arg(m_strFilePath); }

QString CLxRichTextDataEmotion::ToPlainText() { return lxstdui_multi_lang::rich_text_data_emotion::textEmotion(); }

core::CProtoValue CLxRichTextDataEmotion::ToProtoValue() {
    core::CProtoValue value;
    value["type"] = core::CProtoValue(int(LxRichTextDataType_Emotion));
    value["emotionid"] = core::CProtoValue(static_cast<unsigned int>(m_u32EmoticonID));
    value["emotionpath"] = core::CProtoValue(m_strFilePath.toStdString());
    return value;
}

bool CLxRichTextDataEmotion::FromProtoValue(const core::CProtoValue& value) {
    m_u32EmoticonID = value["emotionid"].asUInt32();
    m_strFilePath = QString::fromStdString(value["emotionpath"].asString());
    return true;
}

void CLxRichTextDataEmotion::SetEmoticonIdAndFilePath(uint32_t id, const QString& filePath) {
    m_u32EmoticonID = id;
    m_strFilePath = filePath;
}
