#pragma once
// Picture snippet (kind 2): an anchored image at its shown size (a third of the file's size,
// width capped at 300; see CLxRichTextDataImage::GetImageShownSize), so a click on a picture is
// reported like any other token (hosts open the preview from it).

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataImage.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

class LXUIKIT_EXPORT CLxRichTextSnippetImage : public CLxRichTextSnippetBase, public CLxRichTextDataImage {
public:
    CLxRichTextSnippetImage() : CLxRichTextSnippetBase(LxRichTextDataType_Image) {}
    explicit CLxRichTextSnippetImage(const QString& imagePath) : CLxRichTextSnippetImage() { SetImagePath(imagePath); }

    void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) override;
};
