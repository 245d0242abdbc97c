#pragma once
// Plain text snippet (kind 1): escaped, white space kept ("white-space: pre-wrap") with zero-width
// spaces so long blank runs can break. Not clickable: it has no anchor.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataText.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

class LXUIKIT_EXPORT CLxRichTextSnippetText : public CLxRichTextSnippetBase, public CLxRichTextDataText {
public:
    CLxRichTextSnippetText() : CLxRichTextSnippetBase(LxRichTextDataType_Text) {}
    explicit CLxRichTextSnippetText(const QString& text) : CLxRichTextSnippetText() { SetTextData(text); }

    void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) override;
    void SetTextData(const QString& text) override;
    bool FromProtoValue(const core::CProtoValue& value) override;
};
