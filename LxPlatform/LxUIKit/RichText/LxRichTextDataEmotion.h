#pragma once
// An emoticon (kind 6): its id in the emoticon set and the file that draws it. Its text form for
// sending is "#emotion_<id>#" (see CLxRichText::textWithEmotionID).

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/ILxRichTextData.h>

#include <cstdint>

class LXUIKIT_EXPORT CLxRichTextDataEmotion : public ILxRichTextData {
public:
    CLxRichTextDataEmotion() = default;

    int GetType() const override { return LxRichTextDataType_Emotion; }
    QString ToHtml() override;       // "<img src=\"path\" >", unescaped
    QString ToPlainText() override;  // the localised word for an emoticon
    core::CProtoValue ToProtoValue() override;
    bool FromProtoValue(const core::CProtoValue& value) override;

    void SetEmoticonIdAndFilePath(uint32_t id, const QString& filePath);
    uint32_t GetEmoticonID() const { return m_u32EmoticonID; }
    const QString& GetFilePath() const { return m_strFilePath; }

protected:
    QString m_strFilePath;
    uint32_t m_u32EmoticonID = 0;
};
