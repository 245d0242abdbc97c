#pragma once
// Emoji snippet (kind 8): an anchored image of the configured emoticon size.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataEmoji.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

class LXUIKIT_EXPORT CLxRichTextSnippetEmoji : public CLxRichTextSnippetBase, public CLxRichTextDataEmoji {
public:
    CLxRichTextSnippetEmoji() : CLxRichTextSnippetBase(LxRichTextDataType_Emoji) {}
    CLxRichTextSnippetEmoji(const QString& emojiText, const QString& imagePath) : CLxRichTextSnippetEmoji() {
        SetEmojiText(emojiText);
        SetImagePath(imagePath);
    }

    // Asserts "spConfig != nullptr" when no configuration is given.
    void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) override;
};
