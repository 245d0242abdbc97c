#include <LxUIKit/RichText/LxRichTextDataUser.h>

QString CLxRichTextDataUser::ToHtml() { return QStringLiteral("<span>%1</span>").arg(GetDisplayText()); }

core::CProtoValue CLxRichTextDataUser::ToProtoValue() {
    core::CProtoValue value;
    value["type"] = core::CProtoValue(int(LxRichTextDataType_User));
    value["userid"] = core::CProtoValue(static_cast<unsigned long long>(m_u64UserID));
    value["nickname"] = core::CProtoValue(m_strNickName.toStdString());
    value["displaytext"] = core::CProtoValue(m_strDisplayText.toStdString());
    return value;
}

bool CLxRichTextDataUser::FromProtoValue(const core::CProtoValue& value) {
    m_u64UserID = value["userid"].asUInt64();
    m_strNickName = QString::fromStdString(value["nickname"].asString());
    m_strDisplayText = QString::fromStdString(value["displaytext"].asString());
    return true;
}

void CLxRichTextDataUser::SetUserData(uint64_t userID, const QString& nickName) {
    m_u64UserID = userID;
    m_strNickName = nickName;
    m_strDisplayText.clear();  // a display text made from an older nickname would be stale
}

void CLxRichTextDataUser::SetUserIDAndDisplayText(uint64_t userID, const QString& displayText) {
    m_u64UserID = userID;
    m_strDisplayText = displayText;
}

const QString& CLxRichTextDataUser::GetDisplayText() {
    if (m_strDisplayText.isEmpty())
        m_strDisplayText =
            QStringLiteral("%1").arg(m_strNickName.isEmpty() ? QString::number(m_u64UserID, 10) : m_strNickName);
    return m_strDisplayText;
}
