#include <LxStdUI/MultiLang.h>

#include <LxCore/Environment.h>
#include <LxStdUI/LxStdUILog_p.h>

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

#include <map>

namespace lxstdui_multi_lang {
namespace {

struct FollowedTranslator {
    QString strModule;
    QPointer<QTranslator> pTranslator;
    bool bFollowing = false;  // connected to language changes
};
// Keyed by file pattern; only touched on the GUI thread.
std::map<QString, FollowedTranslator>& Followed() {
    static std::map<QString, FollowedTranslator> s_map;
    return s_map;
}

void Reload(const QString& pattern, FollowedTranslator& slot) {
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return;
    if (slot.pTranslator) {
        QCoreApplication::removeTranslator(slot.pTranslator);
        delete slot.pTranslator;
    }
    const QString file = pattern.arg(core::lang::GetLanguageCode());
    auto* tr = new QTranslator(app);
    if (!tr->load(file)) {
        LX_LOG_ERROR(slot.strModule.toUtf8().constData(), "translation {} cannot be loaded", file);
        delete tr;
        return;
    }
    slot.pTranslator = tr;
    QCoreApplication::installTranslator(tr);
}

const QString kOwnPattern = QStringLiteral(":/lxstdui/i18n/lxstdui_%1.qm");

}  // namespace

void FollowLanguage(const QString& qmPattern, const char* module) {
    FollowedTranslator& slot = Followed()[qmPattern];
    slot.strModule = QString::fromUtf8(module ? module : "");
    Reload(qmPattern, slot);
    if (slot.bFollowing || !QCoreApplication::instance())
        return;
    slot.bFollowing = true;
    QObject::connect(core::lang::Notifier::instance(), &core::lang::Notifier::languageChanged,
                     QCoreApplication::instance(), [qmPattern](int) { Reload(qmPattern, Followed()[qmPattern]); });
}

void ReloadTranslator() {
    auto& followed = Followed();
    auto it = followed.find(kOwnPattern);
    if (it == followed.end())
        FollowLanguage(kOwnPattern, "LxStdUI");
    else
        Reload(kOwnPattern, it->second);
}

namespace gui_helper {
QString textTip() { return QCoreApplication::translate("gui_helper", "Tip"); }
QString textPageLoadFailed() { return QCoreApplication::translate("gui_helper", "The page failed to load"); }
QString textIKnow() { return QCoreApplication::translate("gui_helper", "Got it"); }
}  // namespace gui_helper

namespace rich_text_data_image {
QString textImage() { return QCoreApplication::translate("rich_text_data_image", "[Image]"); }
}  // namespace rich_text_data_image

namespace rich_text_data_emotion {
QString textEmotion() { return QCoreApplication::translate("rich_text_data_emotion", "[Emoticon]"); }
}  // namespace rich_text_data_emotion

namespace zip_helper {
QString textArchiveDone() { return QCoreApplication::translate("zip_helper", "Archive written"); }
QString textArchiveFailed() { return QCoreApplication::translate("zip_helper", "Archive failed"); }
}  // namespace zip_helper

namespace image_preview {
QString textCopySucceeded() { return QCoreApplication::translate("image_preview", "Copied"); }
QString textCopyFailed() { return QCoreApplication::translate("image_preview", "Copy failed"); }
QString textCopy() { return QCoreApplication::translate("image_preview", "Copy"); }
QString textUnsupportedFormat() {
    return QCoreApplication::translate("image_preview", "Translation failed: this picture format cannot be translated");
}
QString textTranslateFailed() {
    return QCoreApplication::translate("image_preview", "Translation failed, please try again");
}
QString textNoTranslateResult() { return QCoreApplication::translate("image_preview", "No translation result"); }
QString textPrevious() { return QCoreApplication::translate("image_preview", "Previous"); }
QString textNext() { return QCoreApplication::translate("image_preview", "Next"); }
QString textTranslate() { return QCoreApplication::translate("image_preview", "Translate"); }
QString textShowOriginal() { return QCoreApplication::translate("image_preview", "Show original"); }
QString textRefresh() { return QCoreApplication::translate("image_preview", "Reload"); }
QString textZoomIn() { return QCoreApplication::translate("image_preview", "Zoom in"); }
QString textZoomOut() { return QCoreApplication::translate("image_preview", "Zoom out"); }
QString textTitle() { return QCoreApplication::translate("image_preview", "Picture"); }
}  // namespace image_preview

namespace common {
QString textOk() { return QCoreApplication::translate("common", "OK"); }
QString textCancel() { return QCoreApplication::translate("common", "Cancel"); }
QString textLoading() { return QCoreApplication::translate("common", "Loading"); }
QString textLoadFailed() { return QCoreApplication::translate("common", "Failed to load"); }
}  // namespace common

}  // namespace lxstdui_multi_lang

static void lxstdui_install_translator_at_startup() { lxstdui_multi_lang::ReloadTranslator(); }
Q_COREAPP_STARTUP_FUNCTION(lxstdui_install_translator_at_startup)
