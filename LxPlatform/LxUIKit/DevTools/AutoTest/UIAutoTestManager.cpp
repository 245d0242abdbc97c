#include <LxUIKit/DevTools/AutoTest/UIAutoTestManager.h>

#include <LxCore/IniWrapper.h>
#include <LxCore/ProductPath.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {
using StartFn = bool (*)(QObject*);
using StopFn = void (*)();
}  // namespace

CUIAutoTestManager* CUIAutoTestManager::instance() {
    static CUIAutoTestManager s;
    return &s;
}

QString CUIAutoTestManager::ConfigFilePath() const {
    return core::product_path::GetSettingsDir() + QStringLiteral("/UIAutoTest.ini");
}

bool CUIAutoTestManager::Init() {
    if (m_pLibrary)
        return true;
    const QString ini = ConfigFilePath();
    if (!QFileInfo::exists(ini)) {
        LXUIKIT_LOG_INFO("UI auto-test: no {}, automation off", ini);
        return false;
    }
    QString plugin = core::CIniWrapper(ini).GetString(QStringLiteral("AutoTest"), QStringLiteral("Plugin"));
    if (plugin.isEmpty()) {
        LXUIKIT_LOG_INFO("UI auto-test: {} names no plug-in, automation off", ini);
        return false;
    }
    if (QFileInfo(plugin).isRelative())
        plugin = QDir(core::product_path::GetSettingsDir()).absoluteFilePath(plugin);
    auto lib = std::make_unique<QLibrary>(plugin);
    if (!lib->load()) {
        LXUIKIT_LOG_ERROR("UI auto-test: cannot load plug-in {}: {}", plugin, lib->errorString());
        return false;
    }
    auto start = reinterpret_cast<StartFn>(lib->resolve("LxUIAutoTest_Start"));
    if (!start) {
        LXUIKIT_LOG_ERROR("UI auto-test: plug-in {} has no LxUIAutoTest_Start", plugin);
        lib->unload();
        return false;
    }
    if (!start(QCoreApplication::instance())) {
        LXUIKIT_LOG_ERROR("UI auto-test: plug-in {} refused to start", plugin);
        lib->unload();
        return false;
    }
    LXUIKIT_LOG_INFO("UI auto-test: plug-in {} started", plugin);
    m_pLibrary = std::move(lib);
    return true;
}

void CUIAutoTestManager::UnInit() {
    if (!m_pLibrary)
        return;
    if (auto stop = reinterpret_cast<StopFn>(m_pLibrary->resolve("LxUIAutoTest_Stop")))
        stop();
    const QString name = m_pLibrary->fileName();
    m_pLibrary->unload();
    m_pLibrary.reset();
    LXUIKIT_LOG_INFO("UI auto-test: plug-in {} unloaded", name);
}
