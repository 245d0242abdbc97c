#include <LxUIKit/RichText/LxRichTextSnippetEmoji.h>

#include <LxUIKit/LxUIKitLog_p.h>

void CLxRichTextSnippetEmoji::CreatHtml(unsigned int index, std::shared_ptr<LxRichTextConfig> spConfig) {
    if (!LXUIKIT_ASSERT(spConfig != nullptr))
        return;
    const std::shared_ptr<LxRichTextConfig> cfg = EffectiveConfig(spConfig);
    m_strHtml = QLatin1String("<a href=\"") + QString::number(index) +
                QLatin1String("\"><span style=\"vertical-align : bottom;\"><img src=\"") +
                EscapeHtmlAttribute(m_strImagePath) + QLatin1String("\"  width='") +
                QString::number(cfg->i32EmoticonWidth) + QLatin1String("' height='") +
                QString::number(cfg->i32EmoticonHeight) + QLatin1String("'/></span></a>");
}
