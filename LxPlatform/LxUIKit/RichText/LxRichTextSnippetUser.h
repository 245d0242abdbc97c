#pragma once
// User mention snippet (kind 3): an anchor in the user colour showing the escaped display text.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/LxRichTextDataUser.h>
#include <LxUIKit/RichText/LxRichTextSnippetBase.h>

class LXUIKIT_EXPORT CLxRichTextSnippetUser : public CLxRichTextSnippetBase, public CLxRichTextDataUser {
public:
    CLxRichTextSnippetUser() : CLxRichTextSnippetBase(LxRichTextDataType_User) {}

    // The markup shows the current display text (escaped), so SetDisplayText takes effect on the
    // next build as well.
    void CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) override;
    void SetUserData(uint64_t userID, const QString& nickName) override;
    void SetUserIDAndDisplayText(uint64_t userID, const QString& displayText) override;
    bool FromProtoValue(const core::CProtoValue& value) override;
};
