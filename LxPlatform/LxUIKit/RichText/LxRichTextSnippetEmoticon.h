#pragma once
// Emoticon snippet (kind 6): an anchored image of the configured emoticon size. Its title carries
// the marker m_kStrEmotionFlag, by which CLxRichText finds emoticon images in its document and
// hands them to the emoticon object handler.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataEmotion.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

class LXUIKIT_EXPORT CLxRichTextSnippetEmoticon : public CLxRichTextSnippetBase, public CLxRichTextDataEmotion {
public:
    static const QString m_kStrEmotionFlag;  // "smallEmotion"

    CLxRichTextSnippetEmoticon() : CLxRichTextSnippetBase(LxRichTextDataType_Emotion) {}
    CLxRichTextSnippetEmoticon(uint32_t id, const QString& filePath) : CLxRichTextSnippetEmoticon() {
        SetEmoticonIdAndFilePath(id, filePath);
    }

    // Asserts "spConfig != nullptr" when no configuration is given.
    void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) override;
};
