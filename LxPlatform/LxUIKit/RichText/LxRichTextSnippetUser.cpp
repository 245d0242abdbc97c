#include <LxUIKit/RichText/LxRichTextSnippetUser.h>

void CLxRichTextSnippetUser::CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) {
    if (!spConfig)
        return;
    const std::shared_ptr<LxRichTextConfig> cfg = EffectiveConfig(spConfig);
    m_strShownText = ShownTextOf({GetDisplayText(), m_strNickName, QString::number(m_u64UserID)});
    m_strHtml = AnchorHtml(index, FormatStyleHtml(cfg->bBold, cfg->bUnderline, cfg->strUserColor, cfg->strFontToken),
                           m_strShownText);
}

void CLxRichTextSnippetUser::SetUserData(uint64_t userID, const QString& nickName) {
    CLxRichTextDataUser::SetUserData(userID, nickName);
    m_strShownText = ShownTextOf({nickName, QString::number(userID, 10)});
}

void CLxRichTextSnippetUser::SetUserIDAndDisplayText(uint64_t userID, const QString& displayText) {
    CLxRichTextDataUser::SetUserIDAndDisplayText(userID, displayText);
    m_strShownText = ShownTextOf({displayText, m_strNickName, QString::number(userID, 10)});
}

bool CLxRichTextSnippetUser::FromProtoValue(const core::CProtoValue& value) {
    CLxRichTextDataUser::FromProtoValue(value);
    m_strShownText = ShownTextOf({GetDisplayText(), m_strNickName, QString::number(m_u64UserID)});
    return true;
}
