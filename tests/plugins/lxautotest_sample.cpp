// Sample automation plug-in: marks the application object so a test can see it start and stop.
// Values left behind are heap strings: the library is unloaded after Stop, so nothing may point
// into its static data (a QStringLiteral would).
#include <QObject>
#include <QString>
#include <QVariant>

static QObject* g_pApplication = nullptr;

extern "C" Q_DECL_EXPORT bool LxUIAutoTest_Start(QObject* application) {
    if (!application)
        return false;
    g_pApplication = application;
    application->setProperty("lx_autotest_state", QString::fromLatin1("started"));
    return true;
}

extern "C" Q_DECL_EXPORT void LxUIAutoTest_Stop() {
    if (g_pApplication)
        g_pApplication->setProperty("lx_autotest_state", QString::fromLatin1("stopped"));
    g_pApplication = nullptr;
}
