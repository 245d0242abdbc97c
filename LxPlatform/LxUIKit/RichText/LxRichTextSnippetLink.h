#pragma once
// Link snippet (kind 7): an anchor in the link colour showing the escaped title with its blanks
// made non-breaking. A link without a (non-blank) title shows its escaped URL instead of nothing,
// and one without either shows kFallbackLinkText. The URL
// itself never goes into the markup: the anchor carries the snippet index, and the host opens the
// URL from the snippet on Clicked.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataLink.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

class LXUIKIT_EXPORT CLxRichTextSnippetLink : public CLxRichTextSnippetBase, public CLxRichTextDataLink {
public:
    CLxRichTextSnippetLink() : CLxRichTextSnippetBase(LxRichTextDataType_Link) {}
    static constexpr const char* kFallbackLinkText = "[link]";

    void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) override;
    void SetLinkData(const QString& urlTitle, const QString& url, LinkType linkType) override;
    bool FromProtoValue(const core::CProtoValue& value) override;

private:
    void RefreshShownText();
};
