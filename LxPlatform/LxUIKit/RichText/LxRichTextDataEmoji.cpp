#include <LxUIKit/RichText/LxRichTextDataEmoji.h>

core::CProtoValue CLxRichTextDataEmoji::ToProtoValue() {
    core::CProtoValue value = CLxRichTextDataImage::ToProtoValue();
    value["emojitext"] = core::CProtoValue(m_strEmojiText.toStdString());
    return value;
}

bool CLxRichTextDataEmoji::FromProtoValue(const core::CProtoValue& value) {
    CLxRichTextDataImage::FromProtoValue(value);
    m_strEmojiText = QString::fromStdString(value["emojitext"].asString());
    return true;
}
