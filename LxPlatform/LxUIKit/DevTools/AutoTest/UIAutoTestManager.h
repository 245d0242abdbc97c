#pragma once
// CUIAutoTestManager: loads the UI automation plug-in named by the INI file
// "<settings folder>/UIAutoTest.ini":
//
//   [AutoTest]
//   Plugin=/path/to/libplugin.so   ; relative paths are relative to the settings folder
//
// A plug-in is a shared library exporting
//   extern "C" bool LxUIAutoTest_Start(QObject* application);
//   extern "C" void LxUIAutoTest_Stop();
// Init() loads it and calls Start; UnInit() calls Stop and unloads it, so after Stop nothing the
// plug-in made may still point into its code or static data. Every outcome is logged;
// no INI file or no Plugin key simply means no automation.

#include <LxUIKit/LxUIKitExport.h>
#include <QLibrary>
#include <QString>

#include <memory>

class LXUIKIT_EXPORT CUIAutoTestManager {
public:
    static CUIAutoTestManager* instance();

    bool Init();
    void UnInit();
    bool IsPluginLoaded() const { return m_pLibrary != nullptr; }
    QString ConfigFilePath() const;

private:
    CUIAutoTestManager() = default;
    std::unique_ptr<QLibrary> m_pLibrary;
};
