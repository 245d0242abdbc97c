#include <LxUIKit/RichText/LxRichTextSnippetImage.h>

void CLxRichTextSnippetImage::CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) {
    if (!spConfig)
        return;
    const QSize shown = GetImageShownSize();
    m_strHtml = QLatin1String("<a href=\"") + QString::number(index) + QLatin1String("\"><img src=\"") +
                EscapeHtmlAttribute(GetDisplayImagePath()) + QLatin1String("\" width=\"") +
                QString::number(shown.width()) + QLatin1String("\" height=\"") + QString::number(shown.height()) +
                QLatin1String("\"></a>");
}
