#pragma once
// A plain text run (kind 1).

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/ILxRichTextData.h>

class LXUIKIT_EXPORT CLxRichTextDataText : public ILxRichTextData {
public:
    CLxRichTextDataText() = default;
    explicit CLxRichTextDataText(const QString& text) : m_strText(text) {}

    int GetType() const override { return LxRichTextDataType_Text; }
    QString ToHtml() override;  // "<span>text</span>", unescaped
    QString ToPlainText() override { return m_strText; }
    core::CProtoValue ToProtoValue() override;
    bool FromProtoValue(const core::CProtoValue& value) override;

    virtual void SetTextData(const QString& text);
    const QString& GetText() const { return m_strText; }

protected:
    QString m_strText;
};
