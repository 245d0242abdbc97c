#pragma once
// An emoji (kind 8): a picture (both image paths) plus the emoji's text, which is also its plain
// text form.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataImage.h>

class LXUIKIT_EXPORT CLxRichTextDataEmoji : public CLxRichTextDataImage {
public:
    CLxRichTextDataEmoji() = default;

    int GetType() const override { return LxRichTextDataType_Emoji; }
    QString ToPlainText() override { return m_strEmojiText; }
    core::CProtoValue ToProtoValue() override;  // the image keys, then "emojitext"
    bool FromProtoValue(const core::CProtoValue& value) override;

    void SetEmojiText(const QString& text) { m_strEmojiText = text; }
    const QString& GetEmojiText() const { return m_strEmojiText; }

protected:
    QString m_strEmojiText;
};
