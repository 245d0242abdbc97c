#include <LxStdUI/MultiLang.h>

#include <LxCore/Environment.h>
#include <LxCore/LxLog.h>

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

namespace lxstdui_multi_lang {
namespace {
QPointer<QTranslator> g_pTranslator;

}  // namespace
}  // namespace lxstdui_multi_lang

static void lxstdui_install_translator_at_startup() {
    using namespace lxstdui_multi_lang;
    ReloadTranslator();
    QObject::connect(core::lang::Notifier::instance(), &core::lang::Notifier::languageChanged,
                     QCoreApplication::instance(), [](int) { ReloadTranslator(); });
}

namespace lxstdui_multi_lang {

void ReloadTranslator() {
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return;
    if (g_pTranslator) {
        QCoreApplication::removeTranslator(g_pTranslator);
        delete g_pTranslator;
    }
    const QString file = QStringLiteral(":/lxstdui/i18n/lxstdui_%1.qm").arg(core::lang::GetLanguageCode());
    auto* tr = new QTranslator(app);
    if (!tr->load(file)) {
        LX_LOG_ERROR("LxStdUI", "translation {} cannot be loaded", file);
        delete tr;
        return;
    }
    g_pTranslator = tr;
    QCoreApplication::installTranslator(tr);
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

namespace common {
QString textOk() { return QCoreApplication::translate("common", "OK"); }
QString textCancel() { return QCoreApplication::translate("common", "Cancel"); }
QString textLoading() { return QCoreApplication::translate("common", "Loading"); }
QString textLoadFailed() { return QCoreApplication::translate("common", "Failed to load"); }
}  // namespace common

}  // namespace lxstdui_multi_lang

Q_COREAPP_STARTUP_FUNCTION(lxstdui_install_translator_at_startup)
