#pragma once
// Localised words of the UI libraries. Texts come from Qt Linguist translations (zh_CN, en_US)
// compiled into the library; the translator follows core::lang (installed when the application
// starts and swapped when the language id changes, which sends QEvent::LanguageChange to widgets).

#include <QString>

namespace lxstdui_multi_lang {

// Loads the translator for the current language now (done automatically at start-up).
void ReloadTranslator();

// Keeps a translator for the current language installed from compiled Linguist files named by a
// pattern ("%1" is the language code, for example ":/app/i18n/app_%1.qm"), and swaps it whenever
// the language changes. Hosts use it for their own texts; calling it again for the same pattern
// only reloads. A file that cannot be loaded is logged under `module` and leaves no translator.
void FollowLanguage(const QString& qmPattern, const char* module);

namespace gui_helper {
QString textTip();
QString textPageLoadFailed();
QString textIKnow();
}  // namespace gui_helper

namespace rich_text_data_image {
QString textImage();
}

namespace rich_text_data_emotion {
QString textEmotion();
}

namespace zip_helper {
QString textArchiveDone();
QString textArchiveFailed();
}  // namespace zip_helper

namespace common {
QString textOk();
QString textCancel();
QString textLoading();
QString textLoadFailed();
}  // namespace common

}  // namespace lxstdui_multi_lang
