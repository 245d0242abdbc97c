#include <LxUIKit/RichText/LxRichTextDataLink.h>

QString CLxRichTextDataLink::ToHtml() { return QStringLiteral("<a href=\"%1\">%2</a>").arg(m_strUrl, m_strUrlTitle); }

core::CProtoValue CLxRichTextDataLink::ToProtoValue() {
    core::CProtoValue value;
    value["type"] = core::CProtoValue(int(LxRichTextDataType_Link));
    value["url"] = core::CProtoValue(m_strUrl.toStdString());
    value["urltitle"] = core::CProtoValue(m_strUrlTitle.toStdString());
    value["linktype"] = core::CProtoValue(int(m_enLinkType));
    return value;
}

bool CLxRichTextDataLink::FromProtoValue(const core::CProtoValue& value) {
    m_strUrl = QString::fromStdString(value["url"].asString());
    m_strUrlTitle = QString::fromStdString(value["urltitle"].asString());
    m_enLinkType = static_cast<LinkType>(value["linktype"].asInt32());
    return true;
}

void CLxRichTextDataLink::SetLinkData(const QString& urlTitle, const QString& url, LinkType linkType) {
    m_strUrlTitle = urlTitle;
    m_strUrl = url;
    m_enLinkType = linkType;
}
