#include <LxUIKit/RichText/LxRichTextDataImage.h>

#include <LxStdUI/MultiLang.h>

#include <QImageReader>

QString CLxRichTextDataImage::ToHtml() {
    const QSize shown = GetImageShownSize();
    // One-pass arg(): a path holding "%2" must not swallow the sizes.
    return QStringLiteral("<img src=\"%1\" width=\"%2\" height=\"%3\">")
        .arg(m_strImagePath, QString::number(shown.width()), QString::number(shown.height()));
}

QString CLxRichTextDataImage::ToPlainText() { return lxstdui_multi_lang::rich_text_data_image::textImage(); }

core::CProtoValue CLxRichTextDataImage::ToProtoValue() {
    core::CProtoValue value;
    value["type"] = core::CProtoValue(GetType());
    value["imagepath"] = core::CProtoValue(m_strImagePath.toStdString());
    value["displayimagepath"] = core::CProtoValue(m_strDisplayImagePath.toStdString());
    return value;
}

bool CLxRichTextDataImage::FromProtoValue(const core::CProtoValue& value) {
    m_strImagePath = QString::fromStdString(value["imagepath"].asString());
    m_strDisplayImagePath = QString::fromStdString(value["displayimagepath"].asString());
    return true;
}

QString CLxRichTextDataImage::GetDisplayImagePath() const {
    return m_strDisplayImagePath.isEmpty() ? m_strImagePath : m_strDisplayImagePath;
}

QSize CLxRichTextDataImage::GetImageOriginSize() const {
    const QString path = GetDisplayImagePath();
    if (path.isEmpty())
        return QSize(-1, -1);
    QImageReader reader(path);
    return reader.canRead() ? reader.size() : QSize(-1, -1);
}

QSize CLxRichTextDataImage::GetImageShownSize() const { return ShownSizeForOrigin(GetImageOriginSize()); }

QSize CLxRichTextDataImage::ShownSizeForOrigin(const QSize& origin) {
    const int w3 = qRound(origin.width() / 3.0);
    const int h3 = qRound(origin.height() / 3.0);
    if (w3 <= 300)
        return QSize(w3, h3);
    // Rounded in two steps on purpose: the height keeps the ratio of the already rounded thirds.
    const int h = qRound(qRound(h3 * 300.0) / double(w3));
    const int w = qRound(qRound(300.0 * w3) / double(w3));
    return QSize(w, h);
}
