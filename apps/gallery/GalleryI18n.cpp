#include "GalleryI18n.h"

#include <LxCore/Environment.h>
#include <LxCore/LxLog.h>

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

namespace {

QPointer<QTranslator> g_pTranslator;

void LoadTranslator() {
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return;
    if (g_pTranslator) {
        QCoreApplication::removeTranslator(g_pTranslator);
        delete g_pTranslator;
    }
    const QString file = QStringLiteral(":/gallery/i18n/gallery_%1.qm").arg(core::lang::GetLanguageCode());
    auto* translator = new QTranslator(app);
    if (!translator->load(file)) {
        LX_LOG_ERROR("Gallery", "translation {} cannot be loaded", file);
        delete translator;
        return;
    }
    g_pTranslator = translator;
    QCoreApplication::installTranslator(translator);
}

}  // namespace

void InstallGalleryTranslator() {
    static bool s_bConnected = false;
    LoadTranslator();
    if (s_bConnected)
        return;
    s_bConnected = true;
    QObject::connect(core::lang::Notifier::instance(), &core::lang::Notifier::languageChanged,
                     QCoreApplication::instance(), [](int) { LoadTranslator(); });
}
