#pragma once
// Localised words of the UI libraries. Texts come from Qt Linguist translations (zh_CN, en_US)
// compiled into the library; the translator follows core::lang (installed when the application
// starts and swapped when the language id changes, which sends QEvent::LanguageChange to widgets).

#include <LxStdUI/LxStdUIExport.h>
#include <QString>

namespace lxstdui_multi_lang {

// Loads the translator for the current language now (done automatically at start-up).
LXSTDUI_EXPORT void ReloadTranslator();

// Keeps a translator for the current language installed from compiled Linguist files named by a
// pattern ("%1" is the language code, for example ":/app/i18n/app_%1.qm"), and swaps it whenever
// the language changes. Hosts use it for their own texts; calling it again for the same pattern
// only reloads. A file that cannot be loaded is logged under `module` and leaves no translator.
LXSTDUI_EXPORT void FollowLanguage(const QString& qmPattern, const char* module);

namespace gui_helper {
LXSTDUI_EXPORT QString textTip();
LXSTDUI_EXPORT QString textPageLoadFailed();
LXSTDUI_EXPORT QString textIKnow();
}  // namespace gui_helper

namespace rich_text_data_image {
LXSTDUI_EXPORT QString textImage();
}

namespace rich_text_data_emotion {
LXSTDUI_EXPORT QString textEmotion();
}

namespace zip_helper {
LXSTDUI_EXPORT QString textArchiveDone();
LXSTDUI_EXPORT QString textArchiveFailed();
}  // namespace zip_helper

namespace image_preview {
LXSTDUI_EXPORT QString textCopySucceeded();
LXSTDUI_EXPORT QString textCopyFailed();
LXSTDUI_EXPORT QString textCopy();
LXSTDUI_EXPORT QString textUnsupportedFormat();
LXSTDUI_EXPORT QString textTranslateFailed();
LXSTDUI_EXPORT QString textNoTranslateResult();
LXSTDUI_EXPORT QString textPrevious();
LXSTDUI_EXPORT QString textNext();
LXSTDUI_EXPORT QString textTranslate();
LXSTDUI_EXPORT QString textShowOriginal();
LXSTDUI_EXPORT QString textRefresh();
LXSTDUI_EXPORT QString textZoomIn();
LXSTDUI_EXPORT QString textZoomOut();
LXSTDUI_EXPORT QString textTitle();
}  // namespace image_preview

namespace common {
LXSTDUI_EXPORT QString textOk();
LXSTDUI_EXPORT QString textCancel();
LXSTDUI_EXPORT QString textLoading();
LXSTDUI_EXPORT QString textLoadFailed();
}  // namespace common

}  // namespace lxstdui_multi_lang
