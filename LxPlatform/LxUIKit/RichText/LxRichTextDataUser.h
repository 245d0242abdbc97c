#pragma once
// A user mention (kind 3): nickname, user id and the text shown for the user.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/ILxRichTextData.h>

#include <cstdint>

class LXUIKIT_EXPORT CLxRichTextDataUser : public ILxRichTextData {
public:
    CLxRichTextDataUser() = default;

    int GetType() const override { return LxRichTextDataType_User; }
    QString ToHtml() override;  // "<span>display text</span>", unescaped
    QString ToPlainText() override { return GetDisplayText(); }
    core::CProtoValue ToProtoValue() override;
    bool FromProtoValue(const core::CProtoValue& value) override;

    // Sets id and nickname; the display text is derived from them again on the next read.
    virtual void SetUserData(uint64_t userID, const QString& nickName);
    virtual void SetUserIDAndDisplayText(uint64_t userID, const QString& displayText);

    uint64_t GetUserID() const { return m_u64UserID; }
    const QString& GetNickName() const { return m_strNickName; }
    // The stored display text; when there is none it is made once from the nickname, or from the
    // decimal user id when the nickname is empty, and stored.
    const QString& GetDisplayText();
    void SetDisplayText(const QString& text) { m_strDisplayText = text; }

protected:
    QString m_strNickName;
    uint64_t m_u64UserID = 0;
    QString m_strDisplayText;
};
