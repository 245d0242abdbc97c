#pragma once
// A picture (kind 2): the image path and, optionally, a separate path of the picture to display
// (a local copy or thumbnail). Sizes are read from the display path.

#include <LxUIKit/LxUIKitExport.h>
#include <LxUIKit/RichText/ILxRichTextData.h>

#include <QSize>

class LXUIKIT_EXPORT CLxRichTextDataImage : public ILxRichTextData {
public:
    CLxRichTextDataImage() = default;

    int GetType() const override { return LxRichTextDataType_Image; }
    // "<img src=\"path\" width=\"w\" height=\"h\">" with the image path and the shown size.
    QString ToHtml() override;
    QString ToPlainText() override;  // the localised word for an image
    core::CProtoValue ToProtoValue() override;
    bool FromProtoValue(const core::CProtoValue& value) override;

    // The size the picture is shown at: a third of the file's size (pictures come at three times
    // the display density), the width capped at 300 with the aspect ratio kept. (0, 0) when the
    // file cannot be read.
    virtual QSize GetImageShownSize() const;

    void SetImagePath(const QString& path) { m_strImagePath = path; }
    const QString& GetImagePath() const { return m_strImagePath; }
    void SetDisplayImagePath(QString path) { m_strDisplayImagePath = std::move(path); }
    // The display path when set, else the image path.
    QString GetDisplayImagePath() const;
    // Pixel size of the file at the display path; (-1, -1) when it cannot be read.
    QSize GetImageOriginSize() const;

    // The shown-size rule on its own, for callers that know the origin size already.
    static QSize ShownSizeForOrigin(const QSize& origin);

protected:
    QString m_strImagePath;
    QString m_strDisplayImagePath;
};
