#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>

#include <LxUIKit/LxUIKitLog_p.h>

const QString CLxRichTextSnippetEmoticon::m_kStrEmotionFlag = QStringLiteral("smallEmotion");

void CLxRichTextSnippetEmoticon::CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) {
    if (!LXUIKIT_ASSERT(spConfig != nullptr))
        return;
    const std::shared_ptr<LxRichTextConfig> cfg = EffectiveConfig(spConfig);
    m_strHtml = QLatin1String("<a href=\"") + QString::number(index) +
                QLatin1String("\"><span style=\"vertical-align : bottom;\"><img src=\"") +
                EscapeHtmlAttribute(m_strFilePath) + QLatin1String("\"  width='") +
                QString::number(cfg->i32EmoticonWidth) + QLatin1String("' height='") +
                QString::number(cfg->i32EmoticonHeight) + QLatin1String("' title=\"") + m_kStrEmotionFlag +
                QLatin1String("\"/></span></a>");
}
