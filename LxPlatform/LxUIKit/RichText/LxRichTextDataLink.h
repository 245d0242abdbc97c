#pragma once
// A link (kind 7): URL, title and a link type that the host interprets (web page, in-app page,
// ...). The type travels as a 32-bit integer.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/ILxRichTextData.h>

#include <cstdint>

class LXUIKIT_EXPORT CLxRichTextDataLink : public ILxRichTextData {
public:
    enum LinkType : int32_t {
        LinkType_Web = 0,
        LinkType_InApp = 1,
        LinkType_Download = 2,
    };

    CLxRichTextDataLink() = default;

    int GetType() const override { return LxRichTextDataType_Link; }
    QString ToHtml() override;  // "<a href=\"url\">title</a>", unescaped
    QString ToPlainText() override { return GetUrl(); }
    core::CProtoValue ToProtoValue() override;
    bool FromProtoValue(const core::CProtoValue& value) override;

    // Title first, URL second.
    virtual void SetLinkData(const QString& urlTitle, const QString& url, LinkType linkType);

    const QString& GetUrl() const { return m_strUrl; }
    const QString& GetUrlTitle() const { return m_strUrlTitle; }
    LinkType GetLinkType() const { return m_enLinkType; }

protected:
    QString m_strUrl;
    QString m_strUrlTitle;
    LinkType m_enLinkType = LinkType_Web;
};
